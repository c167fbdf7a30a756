#include "patients/NameSearch.h"

#include "TestPractice.h"
#include "store/Sql.h"

#include <QRandomGenerator>
#include <QTest>

using namespace namesearch;

namespace {

const QString Doctor = QStringLiteral("0101");

QStringList namesOf(const QStringList &entries)
{
    QStringList names;
    for (const QString &entry : entries)
        names << decodeEntry(entry)->foundName.chopped(10);
    return names;
}

// The patients of the doctor whose first word equals the key, found by reading every row:
// what the search must give, however the store narrows the rows first.
QStringList everyRowCompared(const QString &typed)
{
    QStringList names;
    QSqlQuery rows = store::run(store::clinicDb(), QStringLiteral("SELECT Names FROM Pacients WHERE LKod = ? ORDER BY ID"),
                                {Doctor});
    while (rows.next())
        if (firstWord(rows.value(0).toString()) == searchKey(typed))
            names << rows.value(0).toString();
    return names;
}

} // namespace

class TestNameSearch final : public QObject
{
    Q_OBJECT
private slots:
    void firstWordOfTheName_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QStringList>("found");
        const QStringList ivans{"Иван Петров Иванов", "Иван", "\tИван", "Иван  Георгиев"};
        QTest::newRow("first word") << "Иван" << ivans;
        QTest::newRow("small letters find the same") << "иван" << ivans;
        QTest::newRow("trailing blank is trimmed") << "иван " << ivans;
        QTest::newRow("capitals do not find") << "ИВАН" << QStringList{};
        QTest::newRow("two words find nobody") << "Иван Петров" << QStringList{};
        QTest::newRow("a name stored in small letters") << "мария" << QStringList{};
        QTest::newRow("apostrophe") << "д'Артанян" << QStringList{"Д'Артанян Петров"};
        QTest::newRow("wildcards are letters") << "%" << QStringList{};
        QTest::newRow("latin key, case matters") << "john" << QStringList{"John Smith"};
        QTest::newRow("empty key finds empty first words") << "" << QStringList{"  Иван Стоянов", ""};
    }
    void firstWordOfTheName()
    {
        QFETCH(QString, typed);
        TestPractice practice;
        const QStringList stored{"Иван Петров Иванов", "Иванка Тодорова", "мария Петрова", "Иван", "Петър Иванов",
                                 "  Иван Стоянов", "\tИван", "Иван  Георгиев", "Д'Артанян Петров", "John Smith",
                                 "JOHN Doe", "%Процент", ""};
        int born = 0;
        for (const QString &names : stored)
            practice.addPatient(validEgn(QDate(1970, 1, 1).addDays(++born)), names, Doctor);
        practice.addPatient(validEgn(QDate(1960, 1, 1)), QStringLiteral("Иван Другия"), QStringLiteral("0202"));
        const auto result = searchByFirstName(store::clinicDb(), typed, Doctor);
        QVERIFY(result.ok());
        QCOMPARE(result->patientsOfDoctor, stored.size());
        QTEST(namesOf(result->entries), "found");
    }

    void storeNarrowingMatchesEveryRowCompared()
    {
        // Names built from pieces that sit on the edges of what the store is asked to narrow.
        const QStringList pieces{"Иван", "иван", "Ива", "Иванн", " ", "\t", QString(QChar(0xA0)), QString(QChar(0x2003)),
                                 "Ivan", "IVAN", "ivan", "%", "_", "!", "Я", "\U0001F600"};
        TestPractice practice;
        QRandomGenerator random(42);
        for (int i = 0; i < 400; ++i) {
            QString names;
            for (int n = random.bounded(1, 5); n > 0; --n)
                names += pieces.at(random.bounded(int(pieces.size())));
            practice.addPatient(validEgn(QDate(1950, 1, 1).addDays(i)), names, Doctor);
        }
        for (const char *typed : {"Иван", "иван", "Ива", "Ivan", "ivan", "IVAN", "%", "_", "!", "Я", "\U0001F600", ""}) {
            const auto result = searchByFirstName(store::clinicDb(), typed, Doctor);
            QVERIFY(result.ok());
            QCOMPARE(namesOf(result->entries), everyRowCompared(typed));
        }
        const auto otherDoctor = searchByFirstName(store::clinicDb(), QStringLiteral("Иван"), QStringLiteral("0202")); // without patients
        QVERIFY(otherDoctor.ok());
        QCOMPARE(otherDoctor->patientsOfDoctor, 0);
        QVERIFY(otherDoctor->entries.isEmpty());
    }

    void entryIsReadBackByPosition()
    {
        const QString entry = listEntry(QStringLiteral("Петър"), QStringLiteral("7501011245"));
        QCOMPARE(entry.size(), 65);
        const auto choice = decodeEntry(entry);
        QVERIFY(choice);
        QCOMPARE(choice->foundName, QStringLiteral("Петър") + QString(10, u' '));
        QCOMPARE(choice->foundEgn, QStringLiteral("7501011245"));
        QVERIFY(!decodeEntry(QString()));
    }
};

QTEST_GUILESS_MAIN(TestNameSearch)
#include "tst_NameSearch.moc"
