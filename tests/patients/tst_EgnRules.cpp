#include "patients/EgnMessages.h"
#include "patients/EgnRules.h"

#include <QTest>

class TestEgnRules final : public QObject
{
    Q_OBJECT
private slots:
    void faults_data()
    {
        QTest::addColumn<QString>("egn");
        QTest::addColumn<bool>("dateBad");
        QTest::addColumn<bool>("monthBad");
        QTest::addColumn<bool>("checkBad");
        QTest::newRow("good 1975") << "7501012347" << false << false << false;
        QTest::newRow("good 2000, first of January") << "0041010002" << false << false << false;
        QTest::newRow("empty: month fault only") << "" << false << true << false;
        QTest::newRow("29 Feb of a year divisible by four") << "8002290006" << false << false << false;
        QTest::newRow("29 Feb of 1981") << "8102290000" << true << false << false;
        QTest::newRow("29 Feb 2000 passes") << "0042290000" << false << false << false;
        QTest::newRow("30 Feb 2000") << "0042300006" << true << false << false;
        QTest::newRow("31 April is a date fault") << "7504310005" << true << false << false;
        QTest::newRow("month 13 day 99: month fault only") << "7513990008" << false << true << false;
        QTest::newRow("month 00 passes both") << "7500010000" << false << false << false;
        QTest::newRow("day 00 passes") << "7501000000" << false << false << true;
        QTest::newRow("1800s code refused") << "7521010009" << false << true << false;
        QTest::newRow("2010 refused although the check digit fits") << "1041015557" << false << true << false;
        QTest::newRow("1900-1909 refused") << "0501010000" << false << true << true;
        QTest::newRow("first 0, month 53") << "0053010000" << false << true << true;
        QTest::newRow("remainder 10 takes digit 0") << "7501010010" << false << false << false;
        QTest::newRow("remainder 10, letter reads 0") << "750101001X" << false << false << false;
        QTest::newRow("remainder 10, digit 1 is wrong") << "7501010011" << false << false << true;
        QTest::newRow("letters read as zero") << "abcdefghij" << false << true << false;
        QTest::newRow("eleven characters") << "75010123470" << false << false << false;
        QTest::newRow("nine digits") << "750101234" << false << false << true;
        QTest::newRow("fullwidth digits are no digits") << QStringLiteral("７５０１０１２３４７") << false << true << false;
        QTest::newRow("blank reads as zero") << "75 1012347" << false << false << false;
    }
    void faults()
    {
        QFETCH(QString, egn);
        QTEST(EgnDateBad(egn), "dateBad");
        QTEST(EgnMonthBad(egn), "monthBad");
        QTEST(EgnCheckDigitBad(egn), "checkBad");
    }

    void birthDateAndSex_data()
    {
        QTest::addColumn<QString>("egn");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QDate>("date");
        QTest::addColumn<QString>("sex");
        QTest::newRow("2000s: month without leading zero") << "0545120006" << "12.5.2005" << QDate(2005, 5, 12) << "М";
        QTest::newRow("1900s keeps the digits") << "7501012347" << "01.01.1975" << QDate(1975, 1, 1) << "М";
        QTest::newRow("odd ninth digit is female") << "7501012357" << "01.01.1975" << QDate(1975, 1, 1) << "Ж";
        QTest::newRow("1800s code stays in the 1900 branch") << "7521010009" << "01.21.1975" << QDate() << "М";
        QTest::newRow("day 00 names no date") << "7501000000" << "00.01.1975" << QDate() << "М";
        QTest::newRow("month 00 names no date") << "7500010000" << "01.00.1975" << QDate() << "М";
        QTest::newRow("31 April names no date") << "7504310005" << "31.04.1975" << QDate() << "М";
        QTest::newRow("empty") << "" << "..19" << QDate() << "М";
        QTest::newRow("letter in ninth place reads 0") << "75010123X7" << "01.01.1975" << QDate(1975, 1, 1) << "М";
        QTest::newRow("short number gives no year 197") << "7" << "..197" << QDate() << "М";
    }
    void birthDateAndSex()
    {
        QFETCH(QString, egn);
        QFETCH(QDate, date);
        QTEST(EgnBirthDateText(egn), "text");
        const auto born = EgnBirthDate(egn);
        QCOMPARE(born.has_value(), date.isValid());
        if (born)
            QCOMPARE(*born, date);
        QTEST(EgnSex(egn), "sex");
    }

    void overEighteen_data()
    {
        QTest::addColumn<QString>("egn");
        QTest::addColumn<QDate>("today");
        QTest::addColumn<int>("answer"); // 1 true, 0 false, -1 no date
        QTest::newRow("eighteenth birthday itself") << "0843150004" << QDate(2026, 3, 15) << 0;
        QTest::newRow("the day after") << "0843150004" << QDate(2026, 3, 16) << 1;
        QTest::newRow("the day before") << "0843150004" << QDate(2026, 3, 14) << 0;
        QTest::newRow("later month of the eighteenth year") << "0843150004" << QDate(2026, 4, 1) << 1;
        QTest::newRow("earlier month of the eighteenth year") << "0843150004" << QDate(2026, 2, 28) << 0;
        QTest::newRow("whole calendar years first") << "0052310000" << QDate(2019, 1, 1) << 1;
        QTest::newRow("seventeen") << "0843150004" << QDate(2025, 12, 31) << 0;
        QTest::newRow("day 00 names no date") << "7501000000" << QDate(2026, 3, 15) << -1;
    }
    void overEighteen()
    {
        QFETCH(QString, egn);
        QFETCH(QDate, today);
        QFETCH(int, answer);
        const auto over = EgnOverEighteen(egn, today);
        QCOMPARE(over.has_value(), answer >= 0);
        if (over)
            QCOMPARE(int(*over), answer);
    }

    void publicRule_data()
    {
        QTest::addColumn<QString>("egn");
        QTest::addColumn<bool>("systemTakes");
        QTest::addColumn<bool>("dateBad");
        QTest::addColumn<bool>("monthBad");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QDate>("date");
        QTest::newRow("born 2015") << "1545120008" << false << false << false << "12.5.2015" << QDate(2015, 5, 12);
        QTest::newRow("born 2010") << "1041015557" << false << false << false << "01.1.2010" << QDate(2010, 1, 1);
        QTest::newRow("born 1875") << "7521010009" << false << false << false << "01.1.1875" << QDate(1875, 1, 1);
        QTest::newRow("born 1905") << "0501010001" << false << false << false << "01.01.1905" << QDate(1905, 1, 1);
        QTest::newRow("1800s month 32") << "0532150000" << false << false << false << "15.12.1805" << QDate(1805, 12, 15);
        QTest::newRow("29 Feb 2012") << "1242290000" << false << false << false << "29.2.2012" << QDate(2012, 2, 29);
        QTest::newRow("29 Feb 2013") << "1342290003" << false << true << false << "29.2.2013" << QDate();
        QTest::newRow("29 Feb 1900 is no day") << "0002290001" << false << true << false << "29.02.1900" << QDate();
        QTest::newRow("29 Feb 1800 is no day") << "0022290006" << false << true << false << "29.2.1800" << QDate();
        QTest::newRow("31 April 2015") << "1544310003" << false << true << false << "31.4.2015" << QDate();
        QTest::newRow("month code 53") << "1553010009" << false << false << true << "01.13.2015" << QDate();
        QTest::newRow("month code 33") << "1533010004" << false << false << true << "01.33.1915" << QDate();
        QTest::newRow("1975 as before") << "7501012347" << true << false << false << "01.01.1975" << QDate(1975, 1, 1);
        QTest::newRow("month 00 still passes") << "7500010000" << true << false << false << "01.00.1975" << QDate();
    }
    void publicRule()
    {
        QFETCH(QString, egn);
        QFETCH(bool, systemTakes);
        QFETCH(QDate, date);
        QCOMPARE(!EgnDateBad(egn) && !EgnMonthBad(egn), systemTakes);
        QTEST(EgnDateBad(egn, EgnRule::Public), "dateBad");
        QTEST(EgnMonthBad(egn, EgnRule::Public), "monthBad");
        QTEST(EgnBirthDateText(egn, EgnRule::Public), "text");
        QCOMPARE(EgnBirthDate(egn, EgnRule::Public).value_or(QDate()), date);
    }

    // Switching a practice to the public rule must not turn away a patient it already has:
    // every number the system's rule takes, the public rule takes with the same birth date.
    void publicRuleTakesAllTheSystemTakes()
    {
        int taken = 0;
        for (int year = 0; year < 100; ++year)
            for (int month = 0; month < 100; ++month)
                for (int day : {0, 1, 28, 29, 30, 31, 32}) {
                    const QString nine = QStringLiteral("%1%2%3000").arg(year, 2, 10, QChar(u'0'))
                                             .arg(month, 2, 10, QChar(u'0')).arg(day, 2, 10, QChar(u'0'));
                    const QString egn = nine + QString::number(EgnCheckDigit(nine));
                    if (EgnDateBad(egn) || EgnMonthBad(egn))
                        continue;
                    ++taken;
                    QVERIFY2(!EgnDateBad(egn, EgnRule::Public) && !EgnMonthBad(egn, EgnRule::Public), qPrintable(egn));
                    QCOMPARE(EgnBirthDate(egn, EgnRule::Public), EgnBirthDate(egn));
                }
        QVERIFY(taken > 1000);
    }

    void publicRuleReadsTheAgeOfAChild()
    {
        QCOMPARE(EgnOverEighteen(QStringLiteral("1545120008"), QDate(2026, 3, 1), EgnRule::Public), std::optional<bool>(false));
        QCOMPARE(EgnOverEighteen(QStringLiteral("1545120008"), QDate(2033, 5, 13), EgnRule::Public), std::optional<bool>(true));
        QCOMPARE(EgnOverEighteen(QStringLiteral("7521010009"), QDate(2026, 3, 1)), std::nullopt);
        QCOMPARE(EgnOverEighteen(QStringLiteral("7521010009"), QDate(2026, 3, 1), EgnRule::Public), std::optional<bool>(true));
    }

    void messagesCarryTheNumber()
    {
        const QString message = egnmessages::withNumber(egnmessages::DateHead, QStringLiteral("7504310005"));
        QCOMPARE(message, QStringLiteral("Грешна дата в ЕГН: \r   7504310005"));
    }
};

QTEST_GUILESS_MAIN(TestEgnRules)
#include "tst_EgnRules.moc"
