// Pictures of the treatment window and the referrals window on a demo practice, for a person
// to look at after a change of their layout. Run by hand:
//   (the build makes build/treatment_shots beside the program)
//   build/velmorata demo --data-dir /tmp/demo     (see `velmorata demo --help`)
//   QT_QPA_PLATFORM=offscreen build/treatment_shots /tmp/demo /tmp/shots
#include "Shots.h"
#include "treatment/ui/DenHelp.h"
#include "treatment/ui/PathWay.h"

#include <QApplication>
#include <QPushButton>
#include <QTextStream>

#include <cstdio>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    if (argc != 3) {
        std::fputs("usage: treatment_shots DEMO-FOLDER SHOTS-FOLDER\n", stderr);
        return 2;
    }
    const QString shots = QString::fromLocal8Bit(argv[2]);
    if (!openDemoPractice(argv[1]))
        return 1;
    AnsweringAlways answers(true); // every question ДА
    setDialogPort(&answers);
    QSqlQuery patient = store::run(store::clinicDb(), QStringLiteral("SELECT EGN, Names FROM Pacients ORDER BY ID"));
    if (!patient.next())
        return 1;
    DenHelp *window = DenHelp::open(patient.value(0).toString(), patient.value(1).toString(), QStringLiteral("Edit"));
    if (!window || !saveShot(window, shots + QStringLiteral("/DenHelp.png")))
        return 1;
    window->findChild<QPushButton *>(QStringLiteral("cmdParh"))->click();
    auto *referrals = window->findChild<PathWay *>();
    if (!referrals || !saveShot(referrals, shots + QStringLiteral("/PathWay.png")))
        return 1;
    delete window;
    setDialogPort(nullptr);
    store::closeStore();
    return 0;
}
