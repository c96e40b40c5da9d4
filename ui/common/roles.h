#pragma once

#include <QAccessible>

class QObject;
class QWidget;

/// What our own windows and controls are to assistive programs, which would find plain widgets
/// without a meaning.
namespace roles {

/// To be called once, with a `QApplication`.
void apply();

/// Makes a widget one of this role.
void set(QObject& widget, QAccessible::Role role);

/// Makes a widget one that says nothing which another one does not say: assistive programs take it
/// for invisible, and leave it out.
void decorate(QWidget& widget);

}  // namespace roles
