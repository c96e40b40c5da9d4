#pragma once

#include <QAccessible>

class QObject;
class QWidget;

/// What our own windows and controls are to assistive programs, which would find plain widgets
/// without a meaning.
namespace roles {

/// Call it once, with a `QApplication`.
void apply();

/// Gives a widget this role.
void set(QObject& widget, QAccessible::Role role);

/// Marks a widget that only decorates or repeats another one: assistive programs take it for
/// invisible, and leave it out.
void decorate(QWidget& widget);

}  // namespace roles
