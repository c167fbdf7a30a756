#include "reports/Period.h"

#include <QTest>

using reports::PeriodCheck;

class tst_Period : public QObject
{
    Q_OBJECT

private slots:
    void checks_data()
    {
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("last");
        QTest::addColumn<PeriodCheck>("check");
        QTest::addColumn<QString>("messageStart");

        const QString badDate = QStringLiteral("Грешка в изписването на датата!\rФормата на датата е: ДД.ММ.ГГГГ");
        const QString badMonth = QStringLiteral("Грешка в изписването на месеца!\rФормата на датата е: ДД.ММ.ГГГГ");
        QTest::newRow("one box empty: nothing") << "01.03.2026" << "" << PeriodCheck::Incomplete << "";
        QTest::newRow("short date") << "1.03.2026" << "31.03.2026" << PeriodCheck::BadLength << badDate;
        QTest::newRow("long date") << "01.03.2026" << "31.03.20266" << PeriodCheck::BadLength << badDate;
        QTest::newRow("month 13") << "01.13.2012" << "31.12.2012" << PeriodCheck::BadMonth << badMonth;
        QTest::newRow("length before month") << "01.13.2012" << "1.1.2012" << PeriodCheck::BadLength << badDate;
        QTest::newRow("month 12 passes") << "01.12.2012" << "31.12.2012" << PeriodCheck::Accepted << "";
        // Month 00 and 31 February pass the dialog's own checks, but name no day: the old
        // dialog let them through to a period nobody asked for.
        QTest::newRow("month 00") << "01.00.2012" << "31.12.2012" << PeriodCheck::NoCalendarDay
                                  << "Датата \"01.00.2012\" не е ден от календара!";
        QTest::newRow("31 February") << "01.02.2012" << "31.02.2012" << PeriodCheck::NoCalendarDay
                                     << "Датата \"31.02.2012\" не е ден от календара!";
        QTest::newRow("leading blank") << " 1.02.2012" << "29.02.2012" << PeriodCheck::NoCalendarDay
                                       << "Датата \" 1.02.2012\" не е ден от календара!";
        QTest::newRow("letters") << "ab.cd.efgh" << "29.02.2012" << PeriodCheck::NoCalendarDay << "Датата";
        QTest::newRow("reversed period passes") << "31.03.2026" << "01.03.2026" << PeriodCheck::Accepted << "";
        QTest::newRow("other separators") << "01/02/2012" << "29-02-2012" << PeriodCheck::Accepted << "";
    }

    void checks()
    {
        QFETCH(QString, first);
        QFETCH(QString, last);
        QFETCH(PeriodCheck, check);
        QFETCH(QString, messageStart);
        const reports::PeriodEntry entry = reports::CheckPeriod(first, last);
        QCOMPARE(entry.check, check);
        QCOMPARE(entry.message.isEmpty(), messageStart.isEmpty());
        QVERIFY2(messageStart.isEmpty() || entry.message.startsWith(messageStart), qPrintable(entry.message));
    }

    void textsAndDates()
    {
        const reports::Period period = reports::CheckPeriod(QStringLiteral("01/02/2012"), QStringLiteral("29-02-2012")).period;
        QCOMPARE(period.PeriodFromText, QStringLiteral("01.02.2012"));
        QCOMPARE(period.PeriodToText, QStringLiteral("29.02.2012"));
        QCOMPARE(period.PeriodFromQuery, QStringLiteral("02/01/2012"));
        QCOMPARE(period.PeriodToQuery, QStringLiteral("02/29/2012"));
        QCOMPARE(period.from, QDate(2012, 2, 1));
        QCOMPARE(period.to, QDate(2012, 2, 29));
        QCOMPARE(period.caption(), QStringLiteral("от 01.02.2012 до 29.02.2012"));
        const reports::Period day = reports::CheckPeriod(QStringLiteral("07.03.2012"), QStringLiteral("07.03.2012")).period;
        QCOMPARE(day.caption(), QStringLiteral("07.03.2012"));
    }
};

QTEST_GUILESS_MAIN(tst_Period)
#include "tst_Period.moc"
