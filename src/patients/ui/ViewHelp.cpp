#include "patients/ui/ViewHelp.h"

#include "base/Captions.h"
#include "base/Dialogs.h"
#include "base/ui/WindowPlacement.h"
#include "patients/ServiceColumns.h"
#include "store/Dates.h"
#include "store/Sql.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlQueryModel>
#include <QSqlRecord>
#include <QTableView>
#include <QVBoxLayout>

namespace {

// Dates as the user types them; the fund's mark as a tick.
class HistoryModel final : public QSqlQueryModel
{
public:
    using QSqlQueryModel::QSqlQueryModel;

    QVariant data(const QModelIndex &index, int role) const override
    {
        const QString field = record().fieldName(index.column());
        if (field == QStringLiteral("ZK")) {
            const bool paid = QSqlQueryModel::data(index, Qt::DisplayRole).toBool();
            if (role == Qt::CheckStateRole)
                return paid ? Qt::Checked : Qt::Unchecked;
            if (role == Qt::DisplayRole)
                return QVariant();
        }
        if (field == QStringLiteral("Data") && role == Qt::DisplayRole)
            return dates::isoToTyped(QSqlQueryModel::data(index, role).toString());
        return QSqlQueryModel::data(index, role);
    }
};

QString historyQuery()
{
    QStringList fields;
    for (const ServiceColumn &column : historyViewColumns())
        fields << column.field;
    return QStringLiteral("SELECT %1 FROM Help WHERE EGN = ? ORDER BY Data, KodHelp").arg(fields.join(QStringLiteral(", ")));
}

} // namespace

ViewHelp::ViewHelp(const QString &egn, QWidget *parent)
    : QWidget(parent, Qt::Window)
    , m_model(new HistoryModel(this))
    , m_grid(new QTableView(this))
    , m_caption(new QLabel(this))
{
    setObjectName(QStringLiteral("ViewHelp"));
    setWindowTitle(QStringLiteral("Стоматологична помощ"));
    m_grid->setObjectName(QStringLiteral("DBGrid1"));
    m_caption->setObjectName(QStringLiteral("Data3"));
    QSqlQuery query(store::clinicDb());
    query.prepare(historyQuery());
    query.addBindValue(egn);
    query.exec();
    m_model->setQuery(std::move(query));
    while (m_model->canFetchMore())
        m_model->fetchMore();
    if (m_model->lastError().isValid())
        dialogs().information(QStringLiteral("Услугите на пациента не могат да бъдат прочетени!") + QChar(13) +
                              m_model->lastError().text());
    const QList<ServiceColumn> columns = historyViewColumns();
    for (int column = 0; column < columns.size(); ++column)
        m_model->setHeaderData(column, Qt::Horizontal, columns.at(column).caption);
    m_grid->setModel(m_model);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->horizontalHeader()->setStretchLastSection(true);
    m_grid->resizeColumnsToContents();
    connect(m_grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex &current) { showPosition(current.row()); });
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_grid);
    layout->addWidget(m_caption);
    if (m_model->rowCount() > 0)
        m_grid->setCurrentIndex(m_model->index(0, 0));
    showPosition(m_model->rowCount() > 0 ? 0 : -1);
    resize(640, 360);
}

ViewHelp *ViewHelp::open(const QString &egn, QWidget *parent)
{
    auto *view = new ViewHelp(egn, parent);
    view->setAttribute(Qt::WA_DeleteOnClose);
    view->show();
    return view;
}

int ViewHelp::rowCount() const { return m_model->rowCount(); }

// With no lines the position is -1, and the caption reads "Запис №: 0".
void ViewHelp::showPosition(int row) { m_caption->setText(recordCaption(row)); }

void ViewHelp::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    keepOnScreen(this);
}
