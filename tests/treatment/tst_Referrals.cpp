// Referrals: stamped with the patient and the present sheet, refused whole on a bad date, and
// the buttons of the three grids.
#include "TestPractice.h"

#include "store/Sql.h"
#include "treatment/Referrals.h"
#include "treatment/ui/PathWay.h"

#include <QAbstractItemModel>
#include <QPushButton>
#include <QSqlQuery>
#include <QTableView>
#include <QTest>

Q_DECLARE_METATYPE(ReferralKind)

namespace {

const QString Egn = QStringLiteral("8001010000");

QStringList storedRow(ReferralKind kind, qint64 id)
{
    QSqlQuery row = store::run(store::clinicDb(),
                               QStringLiteral("SELECT EGN, ListID, Data FROM %1 WHERE ID = ?").arg(referralTable(kind).table),
                               {id});
    return row.next() ? QStringList{row.value(0).toString(), row.value(1).toString(), row.value(2).toString()}
                      : QStringList{};
}

QStringList filled(ReferralKind kind, const QString &date)
{
    QStringList values{date};
    for (int i = 1; i < referralTable(kind).columns.size(); ++i)
        values << QStringLiteral("v%1").arg(i);
    return values;
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
        const auto first = SaveReferral(store::clinicDb(), kind, {0, filled(kind, "10.03.2026"), {}}, Egn, "000003");
        QVERIFY2(first.ok(), qPrintable(first.error()));
        QCOMPARE(storedRow(kind, first->id), (QStringList{Egn, "000003", "2026-03-10"}));
        const auto again = SaveReferral(store::clinicDb(), kind, first.value(), Egn, "000009");
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
        const auto saved = SaveReferral(store::clinicDb(), kind, {0, filled(kind, "30.02.2026"), {}}, Egn, "000003");
        QVERIFY(!saved.ok());
        QVERIFY(saved.error().startsWith(QStringLiteral("Грешка при запис на данните!")));
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM ") + referralTable(kind).table), 0);
    }

    void onlyThePatientsReferralsByDate()
    {
        TestPractice practice;
        for (const auto &[egn, date] : {std::pair{Egn, "05.03.2026"}, std::pair{QStringLiteral("9001010000"), "01.01.2026"},
                                        std::pair{Egn, "01.02.2026"}})
            QVERIFY(SaveReferral(store::clinicDb(), ReferralKind::Path, {0, filled(ReferralKind::Path, date), {}}, egn, "000001").ok());
        const auto loaded = LoadReferrals(store::clinicDb(), ReferralKind::Path, Egn);
        QVERIFY(loaded.ok());
        QCOMPARE(loaded->size(), 2);
        QCOMPARE(loaded->at(0).values.first(), QStringLiteral("01.02.2026"));
    }

    void clickingAGridMovesTheButtons()
    {
        TestPractice practice;
        PathWay *window = PathWay::open(Egn, QStringLiteral("000004"));
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

    void typedReferralIsStoredOnThePresentSheet()
    {
        TestPractice practice;
        QVERIFY(SaveReferral(store::clinicDb(), ReferralKind::Spec, {0, filled(ReferralKind::Spec, "01.03.2026"), {}}, Egn,
                             "000001").ok());
        PathWay *window = PathWay::open(Egn, QStringLiteral("000004"));
        const auto spec = window->findChild<QTableView *>(QStringLiteral("grdSpec"));
        QAbstractItemModel *model = spec->model();
        QCOMPARE(model->rowCount(), 2); // the stored row and the new row
        model->setData(model->index(1, 0), QStringLiteral("15.03.2026"));
        model->setData(model->index(1, 1), QStringLiteral("64"));
        spec->setCurrentIndex(model->index(1, 1));
        QTest::mouseClick(spec->viewport(), Qt::LeftButton, {}, spec->visualRect(model->index(1, 1)).center());
        QTest::mouseClick(window->findChild<QPushButton *>(QStringLiteral("cmdUpdateSpec")), Qt::LeftButton);
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Spec WHERE ListID = '000004' AND SISP1 = '64' "
                                               "AND EGN = '8001010000'")),
                 1);
        QCOMPARE(model->rowCount(), 3);
        // Deleting the last stored row leaves the pointer on the new last stored row.
        QTest::mouseClick(spec->viewport(), Qt::LeftButton, {}, spec->visualRect(model->index(1, 0)).center());
        QTest::mouseClick(window->findChild<QPushButton *>(QStringLiteral("cmdDeleteSpec")), Qt::LeftButton);
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Spec")), 1);
        QCOMPARE(spec->currentIndex().row(), 0);
        window->close();
    }
};

QTEST_MAIN(TestReferrals)
#include "tst_Referrals.moc"
