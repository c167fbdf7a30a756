#include "shell/ui/Desktop.h"

#include "shell/Dialogs.h"
#include "shell/RunState.h"
#include "shell/Startup.h"
#include "shell/ui/Splash.h"
#include "shell/ui/WidgetDialogs.h"
#include "store/InstanceLock.h"
#include "store/Store.h"

#include <QApplication>
#include <QDir>

int runDesktop(const QString &dataFolder)
{
    static WidgetDialogs windows;
    setDialogPort(&windows);
    const store::DataPaths paths = store::DataPaths::inFolder(dataFolder);
    initRunState(paths);

    Splash splash;
    splash.showUntilNextSecond();

    if (!QDir().mkpath(paths.folder)) {
        dialogs().information(QStringLiteral("Папката с данните %1 не може да се създаде.").arg(paths.folder));
        return 1;
    }
    store::InstanceLock lock(paths.folder);
    if (!lock.acquire()) {
        dialogs().information(QStringLiteral("Програмата вече работи с папката с данни ") + paths.folder + u'.');
        return 1;
    }
    if (auto opened = store::openStore(paths); !opened) {
        dialogs().information(opened.error());
        return 1;
    }
    const auto doctors = CheckDoctors();
    if (!doctors) {
        dialogs().information(doctors.error());
        store::closeStore();
        return 1;
    }
    if (!doctors.value()) {
        dialogs().information(QStringLiteral("Няма регистриран лекар."));
        store::closeStore();
        return 0;
    }
    dialogs().information(QStringLiteral("Главният прозорец още не е готов."));
    store::closeStore();
    return 0;
}
