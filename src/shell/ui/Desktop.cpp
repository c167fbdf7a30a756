#include "shell/ui/Desktop.h"

#include "admin/ui/MedicAdd.h"
#include "base/Dialogs.h"
#include "base/RunState.h"
#include "shell/Startup.h"
#include "shell/ui/Password.h"
#include "shell/ui/Splash.h"
#include "shell/ui/WidgetDialogs.h"
#include "shell/ui/frmMain.h"
#include "store/Store.h"

#include <QApplication>

Outcome openDataFolder(const store::DataPaths &paths)
{
    store::StoreOpening opened = store::openStore(paths);
    if (opened.stoppedAtEmptyClinicFile()
        && dialogs().question(QStringLiteral("Файлът %1 е празен (0 байта). Така изглежда и неуспешно копиране или "
                                             "възстановяване на данните; тогава отговорете \"НЕ\" и възстановете "
                                             "архива.\rДа започне ли в него нова, празна практика?")
                                  .arg(paths.clinicDb)))
        opened = store::openStore(paths, {.emptyClinicFileIsNew = true});
    return opened ? Outcome::success() : Outcome::failure(opened.error());
}

bool signInAtStart()
{
    const auto doctors = CheckDoctors();
    if (!doctors) {
        dialogs().information(doctors.error());
        return false;
    }
    if (!doctors.value()) {
        MedicAdd firstDoctor;
        firstDoctor.exec();
    }
    return Password::signIn();
}

int runDesktop(const store::DataPaths &paths)
{
    static WidgetDialogs windows;
    setDialogPort(&windows);
    initRunState(paths);

    Splash splash;
    splash.showUntilNextSecond();

    if (const Outcome opened = openDataFolder(paths); !opened) {
        dialogs().information(opened.error());
        return 1;
    }
    int exitCode = 0;
    if (signInAtStart()) {
        frmMain main;
        main.show();
        exitCode = QApplication::exec();
    }
    store::closeStore();
    return exitCode;
}
