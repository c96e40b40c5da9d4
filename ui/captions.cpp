#include "ui/captions.h"

#include "ui/Form.h"
#include "ui/TextLabel.h"

void addCaptions(QWidget* page, std::span<const Caption> captions) {
    for (const auto& [name, place, text, isHeading] : captions) {
        auto* const label = new Placed<TextLabel>(page, name, place, text);
        label->setHeading(isHeading);
    }
}
