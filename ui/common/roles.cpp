#include "ui/common/roles.h"

#include <QAccessibleWidget>
#include <QVariant>
#include <QWidget>

namespace {

constexpr const char* property = "accessibleRole";

QAccessibleInterface* interfaceOf(const QString& /*className*/, QObject* object) {
    if (object == nullptr || !object->isWidgetType()) return nullptr;
    const QVariant role = object->property(property);
    if (!role.isValid()) return nullptr;
    return new QAccessibleWidget(static_cast<QWidget*>(object),
                                 static_cast<QAccessible::Role>(role.toInt()));
}

}  // namespace

void roles::apply() { QAccessible::installFactory(interfaceOf); }

void roles::set(QObject& widget, QAccessible::Role role) {
    widget.setProperty(property, static_cast<int>(role));
}
