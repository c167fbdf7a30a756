#include "shell/ui/Desktop.h"

#include "admin/ui/MedicAdd.h"
#include "shell/Dialogs.h"
#include "shell/RunState.h"
#include "shell/Startup.h"
#include "shell/ui/Password.h"
#include "shell/ui/Splash.h"
#include "shell/ui/WidgetDialogs.h"
#include "shell/ui/frmMain.h"
#include "store/InstanceLock.h"
#include "store/Store.h"

#include <QApplication>
#include <QDir>

Outcome openDataFolder(const store::DataPaths &paths, store::InstanceLock &lock)
{
    if (!QDir().mkpath(paths.folder))
        return Outcome::failure(QStringLiteral("Папката с данните %1 не може да се създаде.").arg(paths.folder));
    if (!lock.acquire())
        return Outcome::failure(QStringLiteral("Програмата вече работи с папката с данни ") + paths.folder + u'.');
    return store::openStore(paths);
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

int runDesktop(const QString &dataFolder)
{
    static WidgetDialogs windows;
    setDialogPort(&windows);
    const store::DataPaths paths = store::DataPaths::inFolder(dataFolder);
    initRunState(paths);

    Splash splash;
    splash.showUntilNextSecond();

    store::InstanceLock lock(paths.folder);
    if (const Outcome opened = openDataFolder(paths, lock); !opened) {
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
