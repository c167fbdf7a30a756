// The grids of stored rows with a new row at the bottom (service lines, referrals): what typing,
// a save and a delete do to the rows and to what counts as unsaved, checked on both models
// under Qt's model tester.
#include "treatment/ui/ReferralGrid.h"
#include "treatment/ui/ServiceGrid.h"

#include <QAbstractItemModelTester>
#include <QTest>

#include <functional>
#include <memory>

namespace {

// What the test needs of a grid model, whichever rows it holds.
struct Grid
{
    std::unique_ptr<QAbstractTableModel> model;
    std::function<bool(int)> typed;
    std::function<bool()> unsaved;
    std::function<void(int)> store; // stores the row as it stands
    std::function<void(int)> drop;
    std::function<QString(int)> firstCell;
};

Grid serviceGrid()
{
    auto *model = new ServiceGridModel;
    ServiceLine first, second;
    first.id = 1;
    first.KodHelp = QStringLiteral("101");
    second.id = 2;
    second.KodHelp = QStringLiteral("301");
    model->setLines({first, second});
    return {std::unique_ptr<QAbstractTableModel>(model), [model](int row) { return model->isEditing(row); },
            [model] { return model->hasUnsavedTyping(); },
            [model](int row) { model->storeLine(row, model->line(row)); }, [model](int row) { model->dropLine(row); },
            [model](int row) { return model->line(row).cell(KodHelpColumn); }};
}

Grid referralGrid()
{
    auto *model = new ReferralGridModel(ReferralKind::Spec);
    model->setReferrals({Referral{1, {QStringLiteral("a")}, {}}, Referral{2, {QStringLiteral("b")}, {}}});
    return {std::unique_ptr<QAbstractTableModel>(model), [model](int row) { return model->isTyped(row); },
            [model] { return model->hasUnsavedTyping(); },
            [model](int row) { model->storeReferral(row, *model->referral(row)); },
            [model](int row) { model->removeReferral(row); },
            [model](int row) { return model->referral(row) ? model->referral(row)->values.value(0) : QString(); }};
}

} // namespace

class tst_GridModels final : public QObject
{
    Q_OBJECT
private slots:
    void typingSavingAndDeleting_data()
    {
        QTest::addColumn<bool>("services");
        QTest::newRow("service lines") << true;
        QTest::newRow("referrals") << false;
    }
    void typingSavingAndDeleting()
    {
        QFETCH(bool, services);
        Grid grid = services ? serviceGrid() : referralGrid();
        QAbstractItemModelTester tester(grid.model.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        QAbstractTableModel &model = *grid.model;
        const int column = services ? KodHelpColumn : 0;
        QCOMPARE(model.rowCount(), 3); // two stored rows and the new one
        QVERIFY(!grid.unsaved());

        // Typing begins the new row; its save makes it a stored row and a fresh new row follows.
        QVERIFY(model.setData(model.index(2, column), QStringLiteral("x"), Qt::EditRole));
        QVERIFY(grid.typed(2) && grid.unsaved());
        grid.store(2);
        QCOMPARE(model.rowCount(), 4);
        QCOMPARE(grid.firstCell(2), QStringLiteral("x"));
        QVERIFY(!grid.typed(3) && !grid.unsaved());

        // A stored row typed into stays typed while another row is deleted beside it.
        QVERIFY(model.setData(model.index(0, column), QStringLiteral("y"), Qt::EditRole));
        grid.drop(1);
        QCOMPARE(model.rowCount(), 3);
        QVERIFY(grid.typed(0) && grid.unsaved());
        QCOMPARE(grid.firstCell(0), QStringLiteral("y"));
        grid.store(0);
        QVERIFY(!grid.unsaved());

        // Dropping the new row's typing leaves the stored rows as they are.
        QVERIFY(model.setData(model.index(2, column), QStringLiteral("z"), Qt::EditRole));
        grid.drop(2);
        QCOMPARE(model.rowCount(), 3);
        QVERIFY(!grid.typed(2) && !grid.unsaved());
    }
};

QTEST_MAIN(tst_GridModels)
#include "tst_GridModels.moc"
