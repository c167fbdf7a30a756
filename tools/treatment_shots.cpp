// Pictures of the treatment window and the referrals window on a demo practice, for a person
// to look at after a change of their layout. Build and run by hand, after the main build:
//   g++ -std=c++20 -fPIC -Isrc -Ibuild/generated tools/treatment_shots.cpp build/libvelmorata_gui.a
//       build/libvelmorata_core.a $(pkg-config --cflags --libs Qt6Widgets Qt6Sql Qt6PrintSupport libsodium)
//       -o /tmp/treatment_shots
//   build/velmorata demo --data-dir /tmp/demo     (see `velmorata demo --help`)
//   QT_QPA_PLATFORM=offscreen /tmp/treatment_shots /tmp/demo /tmp/shots
#include "base/Dialogs.h"
#include "base/RunState.h"
#include "store/Sql.h"
#include "store/Store.h"
#include "treatment/Minutes.h"
#include "treatment/ui/DenHelp.h"
#include "treatment/ui/PathWay.h"

#include <QApplication>
#include <QPushButton>
#include <QTextStream>

#include <cstdio>

namespace {

// Every question is answered ДА; messages are printed, since nobody is there to read a window.
class AnsweringYes final : public DialogPort
{
public:
    void information(const QString &message) override { QTextStream(stderr) << message << '\n'; }
    bool confirmExit() override { return true; }
    DateChoice chooseDate() override { return {}; }
    std::unique_ptr<ProgressPort> progress(const QString &, int) override { return nullptr; }

protected:
    bool askQuestion(const QString &, const QString &) override { return true; }
};

bool save(QWidget *window, const QString &file)
{
    QCoreApplication::processEvents();
    return window->grab().save(file);
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    if (argc != 3) {
        std::fputs("usage: treatment_shots DEMO-FOLDER SHOTS-FOLDER\n", stderr);
        return 2;
    }
    const auto paths = store::DataPaths::inFolder(QString::fromLocal8Bit(argv[1]));
    const QString shots = QString::fromLocal8Bit(argv[2]);
    initRunState(paths);
    if (const Outcome opened = store::openStore(paths); !opened) {
        QTextStream(stderr) << opened.error() << '\n';
        return 1;
    }
    AnsweringYes answers;
    setDialogPort(&answers);
    QSqlQuery doctor = store::run(store::clinicDb(), QStringLiteral("SELECT KodMedic, Names FROM Medic ORDER BY ID"));
    QSqlQuery patient = store::run(store::clinicDb(), QStringLiteral("SELECT EGN, Names FROM Pacients ORDER BY ID"));
    if (!doctor.next() || !patient.next())
        return 1;
    run().CurrentMedicCode = doctor.value(0).toString();
    (void)RecalcMinutesLeft();
    DenHelp *window = DenHelp::open(patient.value(0).toString(), patient.value(1).toString(), QStringLiteral("Edit"));
    if (!window || !save(window, shots + QStringLiteral("/DenHelp.png")))
        return 1;
    window->findChild<QPushButton *>(QStringLiteral("cmdParh"))->click();
    auto *referrals = window->findChild<PathWay *>();
    if (!referrals || !save(referrals, shots + QStringLiteral("/PathWay.png")))
        return 1;
    delete window;
    setDialogPort(nullptr);
    store::closeStore();
    return 0;
}
