// Referrals: stamped with the patient and the sheet of the opening, refused whole on a bad date,
// and the three grids, which keep what was typed.
#include "TestPractice.h"

#include "store/Sql.h"
#include "treatment/Referrals.h"
#include "treatment/ui/PathWay.h"

#include <QAbstractItemModel>
#include <QPointer>
#include <QPushButton>
#include <QSqlQuery>
#include <QTableView>
#include <QTest>

Q_DECLARE_METATYPE(ReferralKind)

namespace {

const QString Egn = QStringLiteral("8001010000");
const QDate Today(2026, 3, 15);

QStringList filled(ReferralKind kind, const QString &date)
{
    QStringList values{date};
    for (int i = 1; i < referralTable(kind).columns.size(); ++i)
        values << QStringLiteral("v%1").arg(i);
    return values;
}


OpeningSheet taken(const QString &number) { return {QStringLiteral("D1"), number, true}; }

Result<Referral> saveNew(ReferralKind kind, const QString &date, const OpeningSheet &sheet, const QString &egn = Egn)
{
    return SaveReferral(store::clinicDb(), kind, {0, filled(kind, date), {}}, egn, sheet, Today);
}

QStringList storedRow(ReferralKind kind, qint64 id)
{
    QSqlQuery row = store::run(store::clinicDb(),
                               QStringLiteral("SELECT EGN, ListID, Data FROM %1 WHERE ID = ?").arg(referralTable(kind).table),
                               {id});
    return row.next() ? QStringList{row.value(0).toString(), row.value(1).toString(), row.value(2).toString()}
                      : QStringList{};
}

} // namespace

class TestReferrals final : public QObject
{
    Q_OBJECT
private slots:
    void kinds_data()
    {
        QTest::addColumn<ReferralKind>("kind");
        QTest::newRow("Path") << ReferralKind::Path;
        QTest::newRow("Invest") << ReferralKind::Invest;
        QTest::newRow("Spec") << ReferralKind::Spec;
    }

    void savedRowTakesTheSheetOfItsLatestSave_data() { kinds_data(); }
    void savedRowTakesTheSheetOfItsLatestSave()
    {
        QFETCH(ReferralKind, kind);
        TestPractice practice;
        const auto first = saveNew(kind, "10.03.2026", taken("000003"));
        QVERIFY2(first.ok(), qPrintable(first.error()));
        QCOMPARE(storedRow(kind, first->id), (QStringList{Egn, "000003", "2026-03-10"}));
        const auto again = SaveReferral(store::clinicDb(), kind, first.value(), Egn, taken("000009"), Today);
        QVERIFY(again.ok());
        QCOMPARE(storedRow(kind, first->id).value(1), QStringLiteral("000009"));
        const auto loaded = LoadReferrals(store::clinicDb(), kind, Egn);
        QVERIFY(loaded.ok());
        QCOMPARE(loaded->size(), 1);
        QCOMPARE(loaded->first().values, filled(kind, "10.03.2026"));
        QVERIFY(DeleteReferral(store::clinicDb(), kind, first->id).ok());
        QVERIFY(storedRow(kind, first->id).isEmpty());
    }

    void impossibleDateWritesNothing_data() { kinds_data(); }
    void impossibleDateWritesNothing()
    {
        QFETCH(ReferralKind, kind);
        TestPractice practice;
        const auto saved = saveNew(kind, "30.02.2026", taken("000003"));
        QVERIFY(!saved.ok());
        QVERIFY(saved.error().startsWith(QStringLiteral("Грешка при запис на данните!")));
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM ") + referralTable(kind).table), 0);
    }

    void onlyThePatientsReferralsByDate()
    {
        TestPractice practice;
        for (const auto &[egn, date] : {std::pair{Egn, "05.03.2026"}, std::pair{QStringLiteral("9001010000"), "01.01.2026"},
                                        std::pair{Egn, "01.02.2026"}})
            QVERIFY(saveNew(ReferralKind::Path, date, taken("000001"), egn).ok());
        const auto loaded = LoadReferrals(store::clinicDb(), ReferralKind::Path, Egn);
        QVERIFY(loaded.ok());
        QCOMPARE(loaded->size(), 2);
        QCOMPARE(loaded->at(0).values.first(), QStringLiteral("01.02.2026"));
    }

    void clickingAGridMovesTheButtons()
    {
        TestPractice practice;
        OpeningSheet sheet = taken("000004");
        PathWay *window = PathWay::open(Egn, &sheet, nullptr);
        const auto path = window->findChild<QTableView *>(QStringLiteral("grdPath"));
        const auto invest = window->findChild<QTableView *>(QStringLiteral("grdInvest"));
        const auto savePath = window->findChild<QPushButton *>(QStringLiteral("cmdUpdatePath"));
        const auto deletePath = window->findChild<QPushButton *>(QStringLiteral("cmdDeletePath"));
        const auto saveInvest = window->findChild<QPushButton *>(QStringLiteral("cmdUpdateInvest"));
        QVERIFY(path && invest && savePath && deletePath && saveInvest);
        QVERIFY(!savePath->isEnabled() && !saveInvest->isEnabled());
        QTest::mouseClick(path->viewport(), Qt::LeftButton, {}, path->visualRect(path->model()->index(0, 0)).center());
        QVERIFY(savePath->isEnabled() && deletePath->isEnabled());
        QTest::mouseClick(invest->viewport(), Qt::LeftButton, {}, invest->visualRect(invest->model()->index(0, 0)).center());
        QVERIFY(!savePath->isEnabled() && !deletePath->isEnabled());
        QVERIFY(saveInvest->isEnabled());
        window->close();
    }

    // A referral stored first on a sheet takes its number in its own transaction: the next of
    // the doctor's year at that moment, not the one the window expected; at 032767 there is none.
    void firstReferralTakesTheNumber_data()
    {
        QTest::addColumn<QString>("storedMeanwhile");
        QTest::addColumn<QString>("expected");
        QTest::newRow("nothing stored meanwhile") << "000001" << "000002";
        QTest::newRow("another patient's sheet stored meanwhile") << "000004" << "000005";
        QTest::newRow("the last number there is") << "032767" << "";
    }
    void firstReferralTakesTheNumber()
    {
        QFETCH(QString, storedMeanwhile);
        QFETCH(QString, expected);
        TestPractice practice(Today);
        practice.addService(validEgn(QDate(1990, 1, 1)), Today, QStringLiteral("101"), QStringLiteral("D1"), storedMeanwhile);
        const auto saved = saveNew(ReferralKind::Path, "15.03.2026", {QStringLiteral("D1"), QStringLiteral("000002"), false});
        QCOMPARE(saved.ok(), !expected.isEmpty());
        if (saved.ok()) {
            QCOMPARE(storedRow(ReferralKind::Path, saved->id).value(1), expected);
            QCOMPARE(saved->ListID, expected);
        } else {
            QVERIFY2(saved.error().contains(QStringLiteral("032767")), qPrintable(saved.error()));
            QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Path")), 0);
        }
    }

    void typedReferralIsStoredOnThePresentSheet()
    {
        TestPractice practice;
        QVERIFY(saveNew(ReferralKind::Spec, "01.03.2026", taken("000001")).ok());
        OpeningSheet sheet{QStringLiteral("D1"), QStringLiteral("000004"), false};
        PathWay *window = PathWay::open(Egn, &sheet, nullptr);
        const auto spec = window->findChild<QTableView *>(QStringLiteral("grdSpec"));
        QAbstractItemModel *model = spec->model();
        QCOMPARE(model->rowCount(), 2); // the stored row and the new row
        model->setData(model->index(1, 0), QStringLiteral("15.03.2026"));
        model->setData(model->index(1, 1), QStringLiteral("64"));
        spec->setCurrentIndex(model->index(1, 1));
        QTest::mouseClick(spec->viewport(), Qt::LeftButton, {}, spec->visualRect(model->index(1, 1)).center());
        QTest::mouseClick(window->findChild<QPushButton *>(QStringLiteral("cmdUpdateSpec")), Qt::LeftButton);
        // No service line took a number yet: the referral takes the first of the year, for the window too.
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Spec WHERE ListID = '000001' AND SISP1 = '64' "
                                               "AND EGN = '8001010000'")),
                 1);
        QCOMPARE(sheet.number, QStringLiteral("000001"));
        QVERIFY(sheet.taken);
        QCOMPARE(model->rowCount(), 3);
        // Deleting the last stored row leaves the pointer on the new last stored row.
        QTest::mouseClick(spec->viewport(), Qt::LeftButton, {}, spec->visualRect(model->index(1, 0)).center());
        QTest::mouseClick(window->findChild<QPushButton *>(QStringLiteral("cmdDeleteSpec")), Qt::LeftButton);
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Spec")), 1);
        QCOMPARE(spec->currentIndex().row(), 0);
        QVERIFY(window->close());
    }

    // Rows typed and not saved stay when another row is saved or deleted; closing over them asks.
    void typingSurvivesOtherRowsAndTheCloseAsks()
    {
        TestPractice practice;
        QVERIFY(saveNew(ReferralKind::Path, "01.03.2026", taken("000001")).ok());
        QVERIFY(saveNew(ReferralKind::Path, "02.03.2026", taken("000001")).ok());
        OpeningSheet sheet = taken("000004");
        QPointer<PathWay> window = PathWay::open(Egn, &sheet, nullptr);
        const auto path = window->findChild<QTableView *>(QStringLiteral("grdPath"));
        QAbstractItemModel *model = path->model();
        model->setData(model->index(2, 1), QStringLiteral("77")); // the new row, typed
        model->setData(model->index(0, 1), QStringLiteral("55")); // a stored row, corrected
        QTest::mouseClick(path->viewport(), Qt::LeftButton, {}, path->visualRect(model->index(1, 0)).center());
        QTest::mouseClick(window->findChild<QPushButton *>(QStringLiteral("cmdUpdatePath")), Qt::LeftButton);
        QTest::mouseClick(path->viewport(), Qt::LeftButton, {}, path->visualRect(model->index(1, 0)).center());
        QTest::mouseClick(window->findChild<QPushButton *>(QStringLiteral("cmdDeletePath")), Qt::LeftButton);
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Path")), 1);
        QCOMPARE(model->index(0, 1).data().toString(), QStringLiteral("55"));
        QCOMPARE(model->index(1, 1).data().toString(), QStringLiteral("77"));

        practice.dialogs().answers = {false};
        QTest::keyClick(window, Qt::Key_Escape);
        QVERIFY(window && window->isVisible());
        QCOMPARE(practice.dialogs().questions.size(), 1);
        QVERIFY(practice.dialogs().questions.first().startsWith(QStringLiteral("Има незаписано направление.")));
        practice.dialogs().answers = {true};
        QVERIFY(window->close());
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Path WHERE Nomer IN ('55', '77')")), 0);
    }
};

QTEST_MAIN(TestReferrals)
#include "tst_Referrals.moc"
