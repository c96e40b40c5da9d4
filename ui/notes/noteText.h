#pragma once

#include <QString>

#include <string>
#include <string_view>

/// A note as the text box holds it, and back, byte for byte. The box knows one kind of line break
/// alone; lone CRs and LFs are signs of their own in it.
namespace noteText {

[[nodiscard]] QString toBox(std::string_view note);
[[nodiscard]] std::string fromBox(const QString& text);

}  // namespace noteText
