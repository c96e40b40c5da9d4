#include "platform/linux/bus/ApplicationObject.h"

void ApplicationObject::Activate(const QVariantMap& /*platformData*/) const { activated(); }

/// The program opens no files.
void ApplicationObject::Open(const QStringList& /*uris*/,
                             const QVariantMap& /*platformData*/) const {
    activated();
}

void ApplicationObject::ActivateAction(const QString& name, const QVariantList& /*parameter*/,
                                       const QVariantMap& /*platformData*/) const {
    actionChosen(name);
}
