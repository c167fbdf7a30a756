#include "treatment/ui/TreatmentRoute.h"

#include "patients/ui/SeekName.h"
#include "treatment/ui/DenHelp.h"

namespace treatmentui {

DenHelp *openTreatment(const QString &egn, const QString &name, const QString &openMode, QWidget *owner)
{
    DenHelp *window = DenHelp::open(egn, name, openMode, owner);
    if (!window)
        return nullptr;
    // The one treatment window is opened again and again: one connection serves every opening.
    QObject::disconnect(window, &DenHelp::closed, owner, nullptr);
    QObject::connect(window, &DenHelp::closed, owner, [](const QString &closedMode) {
        if (closedMode != u"New")
            SeekName::closeOpen();
    });
    return window;
}

DenHelp *openChosenPatient(const QString &egn, const QString &name, QWidget *owner)
{
    return openTreatment(egn, name, QStringLiteral("Edit"), owner);
}

} // namespace treatmentui
