#include "treatment/ui/PathWay.h"

#include "base/Calendar.h"
#include "base/Dialogs.h"
#include "base/UnsavedTyping.h"
#include "base/ui/TypingTableView.h"
#include "store/Sql.h"
#include "treatment/ui/ReferralGrid.h"

#include <QCloseEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

PathWay *PathWay::open(const QString &currentEgn, OpeningSheet *sheet, QWidget *parent)
{
    auto *window = new PathWay(currentEgn, sheet, parent);
    window->show();
    return window;
}

PathWay::PathWay(const QString &currentEgn, OpeningSheet *sheet, QWidget *parent)
    : QDialog(parent, Qt::Window)
    , m_egn(currentEgn)
    , m_sheet(sheet)
{
    setObjectName(QStringLiteral("PathWay"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Издадени направления"));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(buildGrid(ReferralKind::Path, QStringLiteral("grdPath"), QStringLiteral("Path")));
    layout->addWidget(buildGrid(ReferralKind::Invest, QStringLiteral("grdInvest"), QStringLiteral("Invest")));
    layout->addWidget(buildGrid(ReferralKind::Spec, QStringLiteral("grdSpec"), QStringLiteral("Spec")));
    auto *close = new QPushButton(QStringLiteral("Затвори"), this);
    close->setObjectName(QStringLiteral("cmdClose"));
    close->setAutoDefault(false);
    connect(close, &QPushButton::clicked, this, &PathWay::close);
    auto *bottom = new QHBoxLayout;
    bottom->addStretch();
    bottom->addWidget(close);
    layout->addLayout(bottom);
    for (Grid &grid : m_grids)
        reload(grid);
    for (int i = 0; i < m_grids.size(); ++i)
        enableButtons(i, false);
    resize(640, 620);
}

QWidget *PathWay::buildGrid(ReferralKind kind, const QString &name, const QString &suffix)
{
    const int which = int(m_grids.size());
    auto *frame = new QGroupBox(referralTable(kind).frameCaption, this);
    Grid grid{new ReferralGridModel(kind, this), new TypingTableView(frame), new QPushButton(QStringLiteral("Запиши"), frame),
              new QPushButton(QStringLiteral("Изтрий"), frame)};
    grid.view->setObjectName(name);
    grid.view->setModel(grid.model);
    grid.view->setSelectionMode(QAbstractItemView::SingleSelection);
    grid.view->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    grid.save->setObjectName(QStringLiteral("cmdUpdate") + suffix);
    grid.remove->setObjectName(QStringLiteral("cmdDelete") + suffix);
    grid.save->setAutoDefault(false);
    grid.remove->setAutoDefault(false);
    auto *buttons = new QVBoxLayout;
    buttons->addWidget(grid.save);
    buttons->addWidget(grid.remove);
    buttons->addStretch();
    auto *row = new QHBoxLayout(frame);
    row->addWidget(grid.view, 1);
    row->addLayout(buttons);
    connect(grid.view, &QAbstractItemView::pressed, this, [this, which] { focusGrid(which); });
    connect(grid.save, &QPushButton::clicked, this, [this, which] { save(which); });
    connect(grid.remove, &QPushButton::clicked, this, [this, which] { remove(which); });
    m_grids << grid;
    return frame;
}

void PathWay::reload(Grid &grid)
{
    const auto referrals = LoadReferrals(store::clinicDb(), grid.model->kind(), m_egn);
    if (!referrals) {
        dialogs().information(referrals.error());
        return;
    }
    grid.model->setReferrals(referrals.value());
}

void PathWay::enableButtons(int which, bool enabled)
{
    m_grids[which].save->setEnabled(enabled);
    m_grids[which].remove->setEnabled(enabled);
}

void PathWay::focusGrid(int which)
{
    for (int i = 0; i < m_grids.size(); ++i)
        enableButtons(i, i == which);
}

void PathWay::save(int which)
{
    Grid &grid = m_grids[which];
    const int row = grid.view->currentIndex().row();
    const auto referral = grid.model->referral(row);
    if (!referral)
        return; // the empty new row: there is nothing to store
    const auto saved = SaveReferral(store::clinicDb(), grid.model->kind(), *referral, m_egn, *m_sheet, calendar::today());
    if (!saved) {
        dialogs().information(saved.error());
        return;
    }
    m_sheet->number = saved->ListID;
    m_sheet->taken = true;
    grid.model->storeReferral(row, saved.value());
    enableButtons(which, false);
}

void PathWay::remove(int which)
{
    Grid &grid = m_grids[which];
    const int row = grid.view->currentIndex().row();
    const auto referral = grid.model->referral(row);
    if (referral && referral->id != 0) {
        if (const Outcome deleted = DeleteReferral(store::clinicDb(), grid.model->kind(), referral->id); !deleted) {
            dialogs().information(deleted.error());
            return;
        }
    }
    grid.model->removeReferral(row);
    // The next row takes the place of the deleted one; past the end, the last row.
    const int stored = grid.model->rowCount() - 1;
    const int next = stored == 0 ? 0 : std::min(row, stored - 1);
    grid.view->setCurrentIndex(grid.model->index(next, 0));
    enableButtons(which, false);
}

bool PathWay::hasUnsavedTyping() const
{
    return std::any_of(m_grids.begin(), m_grids.end(), [](const Grid &grid) { return grid.model->hasUnsavedTyping(); });
}

void PathWay::reject() { close(); }

void PathWay::closeEvent(QCloseEvent *event)
{
    if (hasUnsavedTyping() && !dialogs().question(dropTypingQuestion(QStringLiteral("Има незаписано направление.")))) {
        event->ignore();
        return;
    }
    // Not QDialog::closeEvent: it would run reject(), which closes.
    event->accept();
}
