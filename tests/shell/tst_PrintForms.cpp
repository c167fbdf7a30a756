#include "TestPractice.h"
#include "base/ui/PrintRenderer.h"
#include "shell/cli/PrintCommand.h"
#include "store/Sql.h"

#include <QFile>
#include <QTest>

namespace {
const QString Doctor = QStringLiteral("2223945198");
}

// The read-only forms of `velmorata print`: a page where there is something to print, a message
// and no file where the patient, the doctor or the period is wrong.
class TestPrintForms final : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        print::installPdfWriter();
        TestPractice practice;
        practice.addDoctor(QStringLiteral("Христо Петков"), Doctor);
        practice.addPatient(m_egn, QStringLiteral("Петър О'Нийл \"Пепи\""), Doctor);
        practice.addService(m_egn, QDate(2026, 3, 2), QStringLiteral("101"), Doctor);
        store::run(store::clinicDb(), QStringLiteral("INSERT INTO Grafic (KodMedic, Data, Ch3) VALUES (?, '2026-03-20', 'Петър ')"),
                   {Doctor});
        QVERIFY(practice.copyFilesTo(m_folder.path()));
    }

    void formsPrintOrRefuse_data()
    {
        QTest::addColumn<QStringList>("form");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("said");
        const QString egn = validEgn(QDate(1975, 4, 12));
        QTest::newRow("record") << QStringList{"record", "--egn", egn} << 0 << "Картон на";
        QTest::newRow("record, unknown EGN") << QStringList{"record", "--egn", "1111111111"} << 1 << "1111111111";
        QTest::newRow("treatment data") << QStringList{"data", "--egn", egn} << 0 << "Данни за лечение";
        QTest::newRow("diary") << QStringList{"diary", "--doctor", Doctor, "--date", "20.03.2026"} << 0 << "График за";
        QTest::newRow("diary, no page that day") << QStringList{"diary", "--doctor", Doctor, "--date", "21.03.2026"} << 0
                                                 << "График за";
        QTest::newRow("diary, unknown doctor") << QStringList{"diary", "--doctor", "999", "--date", "20.03.2026"} << 1
                                               << "999";
        QTest::newRow("diary, not a date") << QStringList{"diary", "--doctor", Doctor, "--date", "31.02.2026"} << 1
                                           << "31.02.2026";
        QTest::newRow("born") << QStringList{"list", "born", "--from", "01.01.1975", "--to", "31.12.1975"} << 0
                              << "Списък";
        QTest::newRow("month 13") << QStringList{"list", "born", "--from", "01.13.1975", "--to", "31.12.1975"} << 1
                                  << "месеца";
        QTest::newRow("no such list") << QStringList{"list", "died", "--from", "01.01.1975", "--to", "31.12.1975"} << 1
                                      << "born, registered or visited";
    }
    void formsPrintOrRefuse()
    {
        QFETCH(QStringList, form);
        QFETCH(int, exitCode);
        QFETCH(QString, said);
        const QString pdf = m_folder.filePath(QStringLiteral("form.pdf"));
        QFile::remove(pdf);
        QString outText, errText;
        QTextStream out(&outText), err(&errText);
        PrintCommand command;
        QCOMPARE(command.execute(QStringList{QStringLiteral("print")} + form
                                     + QStringList{QStringLiteral("--data-dir"), m_folder.path(), QStringLiteral("--pdf"), pdf},
                                 out, err),
                 exitCode);
        out.flush();
        err.flush();
        QVERIFY2((exitCode == 0 ? outText : errText).contains(said), qPrintable(outText + errText));
        QCOMPARE(QFile::exists(pdf), exitCode == 0);
        if (exitCode == 0)
            QVERIFY(QFile(pdf).size() > 1000);
    }

private:
    QTemporaryDir m_folder;
    const QString m_egn = validEgn(QDate(1975, 4, 12));
};

QTEST_MAIN(TestPrintForms)
#include "tst_PrintForms.moc"
