#include "ui/common/captions.h"

#include "ui/common/Form.h"
#include "ui/common/TextLabel.h"

void addCaptions(QWidget* page, std::span<const Caption> captions) {
    for (const auto& [name, place, text, isHeading] : captions) {
        auto* const label = new Placed<TextLabel>(page, name, place, text);
        label->setHeading(isHeading);
    }
}
