#pragma once

#include "base/Event.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

/// What a program offers on the session bus to the desktop, which launches it: the methods of the
/// interface "org.freedesktop.Application".
class ApplicationObject final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    /// The program is to show itself: it was launched again, or given files to open.
    Event<> activated;
    /// An action of the launcher's menu was chosen; any program may send any name.
    Event<const QString&> actionChosen;

public Q_SLOTS:
    // The methods of the interface, by their names there. Their arguments are not used.
    void Activate(const QVariantMap& platformData) const;
    void Open(const QStringList& uris, const QVariantMap& platformData) const;
    void ActivateAction(const QString& name, const QVariantList& parameter,
                        const QVariantMap& platformData) const;
};
