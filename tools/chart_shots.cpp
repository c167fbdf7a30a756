// Pictures of the drawn chart, for a person to look at after a change of it: the patient card
// and the treatment window of a demo patient with many findings, and the patient's record
// print as a PDF in colour and in the greys of a black-and-white printer. Run by hand:
//   (the build makes build/chart_shots beside the program)
//   build/velmorata demo --data-dir /tmp/demo     (see `velmorata demo --help`)
//   xvfb-run -s "-screen 0 1366x768x24" build/chart_shots /tmp/demo /tmp/shots   (or QT_QPA_PLATFORM=offscreen)
//   pdftoppm -png -r 60 -f 1 -l 1 /tmp/shots/record.pdf /tmp/shots/record
#include "Shots.h"
#include "base/ui/PrintRenderer.h"
#include "patients/PatientRecord.h"
#include "patients/PatientRecordPage.h"
#include "patients/ui/KartonAdd.h"
#include "store/Sql.h"
#include "treatment/ui/DenHelp.h"

#include <QApplication>
#include <QLineEdit>
#include <QTextStream>

#include <cstdio>

namespace {

// The patient whose permanent teeth hold the most findings.
std::pair<QString, QString> busiestPatient()
{
    QStringList counted;
    for (int field = 21; field <= 52; ++field)
        counted << QStringLiteral("(CASE WHEN COALESCE(TRIM(Z%1), '') = '' THEN 0 ELSE 1 END)").arg(field);
    QSqlQuery found =
        store::run(store::clinicDb(), QStringLiteral("SELECT Pacients.EGN, Names FROM Pacients JOIN Dental USING (EGN) "
                                                     "ORDER BY %1 DESC, Pacients.ID")
                                          .arg(counted.join(u'+')));
    return found.next() ? std::pair{found.value(0).toString(), found.value(1).toString()}
                        : std::pair<QString, QString>{};
}

// A few more findings typed into the card (not stored), so that the picture shows every kind.
void typeFindings(KartonAdd *card)
{
    const std::pair<int, const char *> typed[] = {{50, "12"},   {39, "18"}, {38, "01"}, {51, "03"}, {23, "7"},
                                                  {45, "МОСТ"}, {36, "5"},  {46, "0"},  {22, "4"},  {52, "3"}};
    for (const auto &[field, text] : typed) {
        QLineEdit *input = card->findChild<QLineEdit *>(QStringLiteral("Z%1").arg(field));
        input->setFocus(Qt::TabFocusReason);
        input->setText(QString::fromUtf8(text));
        emit input->textEdited(input->text());
    }
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    if (argc != 3) {
        std::fputs("usage: chart_shots DEMO-FOLDER SHOTS-FOLDER\n", stderr);
        return 2;
    }
    const QString shots = QString::fromLocal8Bit(argv[2]);
    if (!openDemoPractice(argv[1]))
        return 1;
    AnsweringAlways answers(false); // every question НЕ: nothing typed for the pictures is stored
    setDialogPort(&answers);
    const auto [egn, name] = busiestPatient();
    if (egn.isEmpty())
        return 1;

    auto *card = new KartonAdd(QStringLiteral("Edit"), name, egn, nullptr);
    card->show();
    typeFindings(card);
    if (!saveShot(card, shots + QStringLiteral("/KartonAdd.png")))
        return 1;
    card->hide();

    DenHelp *window = DenHelp::open(egn, name, QStringLiteral("Edit"));
    if (!window || !saveShot(window, shots + QStringLiteral("/DenHelp.png")))
        return 1;

    const auto record = patientrecord::LoadPatientRecord(store::clinicDb(), egn);
    if (!record)
        return 1;
    const print::PageDescription page = patientrecord::RecordPage(record.value());
    if (!print::writePdf(page, shots + QStringLiteral("/record.pdf")) ||
        !print::writePdf(page, shots + QStringLiteral("/record-grey.pdf"), {{}, true, true}))
        return 1;
    QTextStream(stdout) << egn << ' ' << name << '\n';
    delete window;
    delete card;
    setDialogPort(nullptr);
    store::closeStore();
    return 0;
}
