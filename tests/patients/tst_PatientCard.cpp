#include "patients/EgnMessages.h"
#include "patients/EgnRules.h"
#include "patients/EgnRuleSetting.h"
#include "patients/PatientCard.h"

#include "TestPractice.h"
#include "store/Sql.h"

#include <QTest>

using namespace patientcard;

namespace {

const QString Doctor = QStringLiteral("0101");
const QString Taken = validEgn(QDate(1980, 1, 1));

QVariant stored(const QString &sql, std::initializer_list<QVariant> values = {})
{
    return store::scalar(store::clinicDb(), sql, values);
}

CardData typedCard(const QString &names)
{
    CardData card;
    card.fields.insert(QStringLiteral("Names"), names);
    card.fields.insert(QStringLiteral("DataR"), QStringLiteral("02.03.2026"));
    card.fields.insert(QStringLiteral("RZOK"), QStringLiteral("typed over"));
    card.chart[23] = QStringLiteral("C"); // Z24
    card.chart[0] = QStringLiteral("*");  // Z1
    return card;
}

// Nine digits that the rules pass once a blank stands for the tenth: their check digit is 0.
QString nineWithCheckDigitZero()
{
    QDate born(1975, 1, 1);
    while (!validEgn(born).endsWith(u'0'))
        born = born.addDays(1);
    return validEgn(born).left(9);
}

// Nine characters and the check digit they call for.
QString withCheckDigit(const QString &nine) { return nine + QString::number(EgnCheckDigit(nine)); }

} // namespace

class TestPatientCard final : public QObject
{
    Q_OBJECT
private slots:
    void numberEntry_data()
    {
        using namespace egnmessages;
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QStringList>("messages");
        QTest::addColumn<int>("verdict");
        const int failed = int(EgnVerdict::Failed);
        const QString nine = validEgn(QDate(1975, 1, 1)).left(9);
        // The card stays open with the one message: no second one about an emptied box.
        QTest::newRow("nine digits: the length alone") << nine << QStringList{InvalidLength} << failed;
        QTest::newRow("nine digits and a blank pass the length and fall at the rules")
            << nine + " " << QStringList{withNumber(CheckDigitHead, nine)} << failed;
        const QString passing = nineWithCheckDigitZero();
        for (const QString &typed : {passing + " ", " " + passing})
            QTest::newRow(qPrintable("nine digits the rules pass: '" + typed + "'"))
                << typed << QStringList{withNumber(InvalidLength, passing)} << failed;
        const QString blank = QStringLiteral("75010 1234");
        QTest::newRow("a blank the rules read as a digit") << blank << QStringList{withNumber(InvalidLength, blank)} << failed;
        for (const auto &[typed, head] : {std::pair{u"7513011234"_qs, MonthHead}, std::pair{u"7502301234"_qs, DateHead},
                                          std::pair{u"75O1011234"_qs, CheckDigitHead}})
            QTest::newRow(qPrintable(typed)) << typed << QStringList{withNumber(head, typed)} << failed;
        QTest::newRow("valid, unknown") << validEgn(QDate(1980, 6, 15), false) << QStringList{} << int(EgnVerdict::NewPatient);
        QTest::newRow("valid, stored") << validEgn(QDate(1975, 1, 1)) << QStringList{u"Имате пациент с това ЕГН!\rЩе покажа данните."_qs}
                                       << int(EgnVerdict::ExistingPatient);
    }
    void numberEntry()
    {
        QFETCH(QString, typed);
        QFETCH(QStringList, messages);
        QFETCH(int, verdict);
        TestPractice practice;
        practice.addPatient(validEgn(QDate(1975, 1, 1)), QStringLiteral("Иван Петров Иванов"), Doctor);
        const auto entry = checkEnteredEgn(store::clinicDb(), typed);
        QVERIFY(entry.ok());
        QCOMPARE(entry->messages, messages);
        QCOMPARE(int(entry->verdict), verdict);
        if (entry->verdict == EgnVerdict::ExistingPatient)
            QCOMPARE(entry->existingName, QStringLiteral("Иван Петров Иванов"));
        if (entry->verdict != EgnVerdict::Failed)
            QCOMPARE(entry->sex, typed == validEgn(QDate(1975, 1, 1)) ? QStringLiteral("М") : QStringLiteral("Ж"));
    }

    // A child born in 2015 under each of the practice's rules: the system's refuses the number
    // with its own message and says below it where the setting is; the public rule takes it,
    // and the new card stores the birth date it names.
    void childBornIn2015_data()
    {
        QTest::addColumn<bool>("publicRule");
        QTest::newRow("the system's rule") << false;
        QTest::newRow("the public rule") << true;
    }
    void childBornIn2015()
    {
        QFETCH(bool, publicRule);
        TestPractice practice;
        const QString child = validEgn(QDate(2015, 5, 12));
        QVERIFY(egnrule::storeRule(store::clinicDb(), publicRule ? EgnRule::Public : EgnRule::System).ok());
        const auto entry = checkEnteredEgn(store::clinicDb(), child);
        QVERIFY(entry.ok());
        if (!publicRule) {
            QCOMPARE(entry->messages, QStringList{egnmessages::withNumber(egnmessages::MonthHead, child) + u'\r' + egnrule::whereTheSettingIs()});
            QVERIFY(egnrule::whereTheSettingIs().contains(QStringLiteral("\"Служебна\" → \"Правило за ЕГН\"")));
            QVERIFY(!saveNewCard(store::clinicDb(), CardData{}, child, {}).ok());
            return;
        }
        QCOMPARE(entry->messages, QStringList{});
        QCOMPARE(int(entry->verdict), int(EgnVerdict::NewPatient));
        QVERIFY(saveNewCard(store::clinicDb(), CardData{}, child, {Doctor, std::nullopt, {}, {}}).ok());
        QCOMPARE(practice.row(QStringLiteral("SELECT DataB FROM Pacients WHERE EGN = ?"), {child}),
                 QStringList{QStringLiteral("2015-05-12")});
    }

    // Only a number the public rule would take is told about the setting: a plain mistake is not.
    void theSettingIsNamedOnlyWhereItHelps()
    {
        TestPractice practice;
        QVERIFY(!numberRefusal(QStringLiteral("7513011234"), EgnRule::System).contains(egnrule::whereTheSettingIs()));
        QVERIFY(!numberRefusal(validEgn(QDate(2015, 5, 12)), EgnRule::Public).contains(egnrule::whereTheSettingIs()));
        QVERIFY(numberRefusal(validEgn(QDate(2015, 5, 12)), EgnRule::System).contains(egnrule::whereTheSettingIs()));
        QCOMPARE(egnrule::storedRule(store::clinicDb()), EgnRule::System);
    }

    void inputRules_data()
    {
        QTest::addColumn<QString>("rule");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("result");
        QTest::newRow("street mark") << "street" << "Витоша !5" << "ул. Витоша №5";
        QTest::newRow("street twice keeps one prefix") << "street" << "ул. Витоша №5" << "ул. Витоша №5";
        QTest::newRow("boulevard") << "street" << "бул.Витоша 5" << "бул.Витоша 5";
        QTest::newRow("only the first mark") << "street" << "А !1 !2" << "ул. А №1 !2";
        QTest::newRow("empty street") << "street" << "" << "ул. ";
        QTest::newRow("mark counted on the untrimmed text") << "street" << "  А !5" << "ул. А !5№";
        QTest::newRow("quarter kept") << "quarter" << "кв.Лозенец" << "кв.Лозенец";
        QTest::newRow("complex kept") << "quarter" << "к-с Младост" << "к-с Младост";
        QTest::newRow("quarter prefixed") << "quarter" << "Лозенец" << "кв. Лозенец";
        QTest::newRow("quarter twice") << "quarter" << "кв. Лозенец" << "кв. Лозенец";
        QTest::newRow("empty quarter") << "quarter" << "" << "кв. ";
        QTest::newRow("names: empty") << "names" << "" << "message";
        QTest::newRow("names: one word and a blank") << "names" << "Иван " << "message";
        QTest::newRow("names: one word alone") << "names" << "Иван" << "";
        QTest::newRow("names: two words pass") << "names" << "Иван Петров" << "";
        QTest::newRow("names: apostrophe") << "names" << "Д'Артанян Петров Иванов" << "";
        QTest::newRow("book: eight") << "book" << "12345678" << "";
        QTest::newRow("book: seven") << "book" << "1234567" << "message";
        QTest::newRow("book: nine") << "book" << "123456789" << "message";
        QTest::newRow("book: eight blanks") << "book" << "        " << "message";
        QTest::newRow("book: eight behind blanks") << "book" << "  12345678 " << "";
    }
    void inputRules()
    {
        QFETCH(QString, rule);
        QFETCH(QString, typed);
        QFETCH(QString, result);
        if (rule == "street")
            QCOMPARE(streetWithPrefix(typed), result);
        else if (rule == "quarter")
            QCOMPARE(quarterWithPrefix(typed), result);
        else if (rule == "names")
            QCOMPARE(namesIncomplete(typed), result == "message");
        else
            QCOMPARE(healthBookInvalid(typed), result == "message");
    }

    void postCodeLookUp()
    {
        TestPractice practice;
        const auto sofia = findPostCode(store::dataDb(), QStringLiteral("1000"));
        QVERIFY(sofia.ok() && sofia.value());
        QCOMPARE(sofia.value()->tawn, QStringLiteral("гр. София"));
        QCOMPARE(sofia.value()->zk, QStringLiteral("22"));
        QCOMPARE(sofia.value()->zdRn, QStringLiteral("01"));
        for (const QString &unknown : {QStringLiteral("9999"), QStringLiteral(" 1000"), QStringLiteral("10'0")}) {
            const auto none = findPostCode(store::dataDb(), unknown);
            QVERIFY(none.ok());
            QVERIFY(!none.value());
        }
    }

    void newCardStoresWhatTheSaveSets()
    {
        TestPractice practice;
        const QString egn = validEgn(QDate(2005, 5, 12), false);
        const auto saved = saveNewCard(store::clinicDb(), typedCard(QStringLiteral("Д'Артанян Петров")), egn, {Doctor, {}, u"22"_qs, u"01"_qs});
        QVERIFY2(saved.ok(), qPrintable(saved.error()));
        QCOMPARE(practice.row("SELECT Names, LKod, RZOK, ZR, DataB, DataR, Z24, Z1 FROM Pacients JOIN Dental USING (EGN) "
                              "WHERE EGN = ?", {egn}),
                 (QStringList{"Д'Артанян Петров", Doctor, "22", "01", "2005-05-12", "2026-03-02", "C", "*"}));
        QVERIFY(saved->pacientRowId > 0 && saved->dentalRowId > 0);
        // Without a post code found, the two fund fields become empty whatever was typed.
        const QString other = validEgn(QDate(1990, 2, 3));
        QVERIFY(saveNewCard(store::clinicDb(), typedCard(QStringLiteral("А Б")), other, {Doctor, {}, {}, {}}).ok());
        QVERIFY(stored("SELECT RZOK FROM Pacients WHERE EGN = ?", {other}).isNull());
    }

    // Only dates reach DataB and DataR: a number that names no birth day leaves DataB empty with
    // a warning at its entry, and a registration date that is no date refuses the save, as does
    // a number the entry refuses or one already stored.
    void newCardSave_data()
    {
        QTest::addColumn<QString>("egn");
        QTest::addColumn<QString>("registered");
        QTest::addColumn<QStringList>("dates");
        QTest::addColumn<QString>("refusal");
        const QString valid = validEgn(QDate(1975, 1, 2));
        const QString noDate = QStringLiteral("\"Дата рег.\" не е дата: ");
        QTest::newRow("day 00") << withCheckDigit("750100123") << "" << QStringList{"", ""} << "";
        QTest::newRow("month 00") << withCheckDigit("750001123") << "1.3.2026" << QStringList{"", "2026-03-01"} << "";
        QTest::newRow("registration no date") << valid << "вчера" << QStringList() << noDate + "вчера";
        QTest::newRow("registration 31.02") << valid << "31.02.2026" << QStringList() << noDate + "31.02.2026";
        QTest::newRow("a blank the rules pass") << "75010 1234" << "" << QStringList() << "Няма въведено валидно ЕГН!";
        QTest::newRow("already stored") << Taken << "" << QStringList() << "Вече има пациент с това ЕГН:";
    }
    void newCardSave()
    {
        QFETCH(QString, egn);
        QFETCH(QString, registered);
        QFETCH(QString, refusal);
        TestPractice practice;
        practice.addPatient(Taken, QStringLiteral("Стар Пациент"), Doctor);
        CardData card = typedCard(QStringLiteral("Иван Петров"));
        card.fields.insert(QStringLiteral("DataR"), registered);
        const auto saved = saveNewCard(store::clinicDb(), card, egn, {Doctor, {}, {}, {}});
        if (!refusal.isEmpty()) {
            QVERIFY2(!saved.ok() && saved.error().startsWith(refusal), qPrintable(saved.error()));
            QCOMPARE(practice.count("SELECT COUNT(*) FROM Pacients") + practice.count("SELECT COUNT(*) FROM Dental"), 2);
            return;
        }
        QVERIFY2(saved.ok(), qPrintable(saved.error()));
        QTEST(practice.row("SELECT DataB, DataR FROM Pacients WHERE EGN = ?", {egn}), "dates");
        store::run(store::clinicDb(), QStringLiteral("DELETE FROM Pacients WHERE EGN = ?"), {egn});
        const auto anew = checkEnteredEgn(store::clinicDb(), egn);
        QCOMPARE(int(anew->verdict), int(EgnVerdict::NewPatient));
        QVERIFY(anew->messages.value(0).startsWith(egnmessages::withNumber(egnmessages::DateHead, egn)));
    }

    void changesCreateAMissingChartRow()
    {
        TestPractice practice;
        const QString egn = validEgn(QDate(1975, 1, 1));
        practice.addPatient(egn, QStringLiteral("Иван Петров"), Doctor);
        store::run(store::clinicDb(), QStringLiteral("DELETE FROM Dental"));
        auto card = loadPatient(store::clinicDb(), egn);
        QVERIFY(card.ok() && card.value());
        CardData edited = *card.value();
        QCOMPARE(edited.dentalRowId, qint64(0));
        edited.fields.insert(QStringLiteral("Pol"), QStringLiteral("М"));
        edited.chart[27] = QStringLiteral("K"); // Z28
        const auto saved = saveCardChanges(store::clinicDb(), edited, egn);
        QVERIFY2(saved.ok(), qPrintable(saved.error()));
        QCOMPARE(practice.row("SELECT Z28, Pol FROM Dental JOIN Pacients USING (EGN)"), (QStringList{"K", "М"}));
        // Saved again, the row made the first time is updated, not doubled.
        edited = saved.value();
        edited.chart[27] = QStringLiteral("X");
        QVERIFY(saveCardChanges(store::clinicDb(), edited, egn).ok());
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Dental"), 1);
        QCOMPARE(stored("SELECT Z28 FROM Dental").toString(), QStringLiteral("X"));
    }

    void failedSaveLeavesNothingHalfDone()
    {
        TestPractice practice;
        const QString egn = validEgn(QDate(1975, 1, 1));
        practice.addPatient(egn, QStringLiteral("Иван Петров"), Doctor);
        CardData edited = *loadPatient(store::clinicDb(), egn).value();
        edited.fields.insert(QStringLiteral("Names"), QStringLiteral("Сменено Име"));
        store::run(store::clinicDb(), QStringLiteral("DROP TABLE Dental"));
        const auto saved = saveCardChanges(store::clinicDb(), edited, egn);
        QVERIFY(!saved.ok());
        QCOMPARE(stored("SELECT Names FROM Pacients").toString(), QStringLiteral("Иван Петров"));
        const auto added = saveNewCard(store::clinicDb(), typedCard(QStringLiteral("Нов")), validEgn(QDate(1990, 2, 3)), {Doctor, {}, {}, {}});
        QVERIFY(!added.ok());
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Pacients"), 1);
    }

    void deleteRemovesOnlyPatientChartAndServices()
    {
        TestPractice practice;
        const QString egn = validEgn(QDate(1975, 1, 1));
        const QString other = validEgn(QDate(1976, 1, 1));
        practice.addPatient(egn, QStringLiteral("Иван Петров"), Doctor);
        practice.addPatient(other, QStringLiteral("Мария Петрова"), Doctor);
        for (const QString &who : {egn, egn, other})
            practice.addService(who, QDate(2026, 3, 1), QStringLiteral("101"), Doctor);
        store::run(store::clinicDb(), QStringLiteral("INSERT INTO Path (EGN) VALUES (?)"), {egn});
        const auto deleted = deletePatient(store::clinicDb(), *loadPatient(store::clinicDb(), egn).value(), egn);
        QVERIFY2(deleted.ok(), qPrintable(deleted.error()));
        const QString left = QStringLiteral("SELECT (SELECT group_concat(EGN) FROM Pacients), (SELECT group_concat(EGN) FROM "
                                            "Dental), (SELECT group_concat(EGN) FROM Help), (SELECT group_concat(EGN) FROM Path)");
        QCOMPARE(practice.row(left), (QStringList{other, other, other, egn})); // referrals are kept
    }
};

QTEST_GUILESS_MAIN(TestPatientCard)
#include "tst_PatientCard.moc"
