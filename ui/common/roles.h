#pragma once

#include <QAccessible>

class QObject;

/// What our own windows and controls are to assistive programs, which would find plain widgets
/// without a meaning.
namespace roles {

/// To be called once, with a `QApplication`.
void apply();

/// Makes a widget one of this role.
void set(QObject& widget, QAccessible::Role role);

}  // namespace roles
