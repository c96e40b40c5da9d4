#include "ui/common/roles.h"

#include <QAccessibleWidget>
#include <QVariant>
#include <QWidget>

namespace {

constexpr const char* property = "accessibleRole";

/// What only decorates.
class Decoration final : public QAccessibleWidget {
public:
    explicit Decoration(QWidget* widget) : QAccessibleWidget(widget, QAccessible::Graphic) {}

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.invisible = true;
        return state;
    }
};

QAccessibleInterface* interfaceOf(const QString& /*className*/, QObject* object) {
    if (object == nullptr || !object->isWidgetType()) return nullptr;
    const QVariant role = object->property(property);
    if (!role.isValid()) return nullptr;
    auto* const widget = static_cast<QWidget*>(object);
    if (role.toInt() == QAccessible::Graphic) return new Decoration(widget);
    return new QAccessibleWidget(widget, static_cast<QAccessible::Role>(role.toInt()));
}

}  // namespace

void roles::apply() { QAccessible::installFactory(interfaceOf); }

void roles::set(QObject& widget, QAccessible::Role role) {
    widget.setProperty(property, static_cast<int>(role));
    // A name or a text that was set before has made an interface, of another role, whether or not
    // an assistive program runs as yet.
    QAccessible::deleteAccessibleInterface(
        QAccessible::uniqueId(QAccessible::queryAccessibleInterface(&widget)));
}

void roles::decorate(QWidget& widget) { set(widget, QAccessible::Graphic); }
