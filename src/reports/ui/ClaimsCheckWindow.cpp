#include "reports/ui/ClaimsCheckWindow.h"

#include "base/ui/NamedButton.h"
#include "base/ui/PrintPreview.h"
#include "base/ui/WindowPlacement.h"
#include "reports/claimscheck/ClaimsCheckPage.h"
#include "store/Dates.h"
#include "treatment/ui/TreatmentRoute.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

enum Column { DateColumn, SheetColumn, TextColumn, ColumnCount };

// The patient a row belongs to; empty on a rule's row and on a finding of no patient.
constexpr int EgnRole = Qt::UserRole;
constexpr int NameRole = Qt::UserRole + 1;

// A rule with more findings than this opens folded, so that the rules after it stay in sight.
constexpr qsizetype UnfoldedFindings = 50;

QLabel *headingLabel(const QString &name, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setObjectName(name);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

// The findings of one rule, or of one patient within it: from `first` up to the first that differs.
template <typename Same>
qsizetype runEnd(const QList<reports::ClaimFinding> &findings, qsizetype first, Same same)
{
    qsizetype end = first + 1;
    while (end < findings.size() && same(findings.at(first), findings.at(end)))
        ++end;
    return end;
}

} // namespace

ClaimsCheckWindow *ClaimsCheckWindow::open(QWidget *parent, const QList<reports::ClaimFinding> &findings,
                                           const reports::Period &period, const QString &medicName)
{
    ClaimsCheckWindow *window = openOrMake([parent] {
        auto *made = new ClaimsCheckWindow(parent);
        made->setAttribute(Qt::WA_DeleteOnClose);
        return made;
    });
    window->load(findings, period, medicName);
    bringForward(window);
    window->m_tree->setFocus();
    return window;
}

ClaimsCheckWindow::ClaimsCheckWindow(QWidget *parent)
    : QDialog(parent, Qt::Window)
{
    setObjectName(QStringLiteral("ClaimsCheck"));
    setWindowTitle(QStringLiteral("Проверка на отчета"));
    m_tree = new QTreeWidget(this);
    m_tree->setObjectName(QStringLiteral("treeFindings"));
    m_tree->setColumnCount(ColumnCount);
    m_tree->setHeaderLabels({QStringLiteral("Дата"), QStringLiteral("Лист"), QStringLiteral("Забележка")});
    m_tree->setUniformRowHeights(true);
    m_tree->setColumnWidth(DateColumn, 170);
    m_tree->setColumnWidth(SheetColumn, 70);
    m_tree->header()->setStretchLastSection(true);
    connect(m_tree, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem *item) { openPatient(item); });
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(buildHeading());
    layout->addWidget(m_tree, 1);
    layout->addWidget(buildButtons());
    resize(1000, 640);
}

QWidget *ClaimsCheckWindow::buildHeading()
{
    auto *heading = new QWidget(this);
    auto *form = new QFormLayout(heading);
    form->setContentsMargins(0, 0, 0, 0);
    m_periodLabel = headingLabel(QStringLiteral("lblPeriod"), heading);
    m_doctorLabel = headingLabel(QStringLiteral("lblDoctor"), heading);
    m_summaryLabel = headingLabel(QStringLiteral("lblSummary"), heading);
    QFont bold = m_summaryLabel->font();
    bold.setBold(true);
    m_summaryLabel->setFont(bold);
    form->addRow(QStringLiteral("Период:"), m_periodLabel);
    form->addRow(QStringLiteral("Лекар:"), m_doctorLabel);
    form->addRow(m_summaryLabel);
    return heading;
}

QWidget *ClaimsCheckWindow::buildButtons()
{
    auto *bar = new QWidget(this);
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    auto *printButton = namedButton(QStringLiteral("cmdPrint"), QStringLiteral("Печат"), bar,
                                    QStringLiteral("Показва списъка за печат"));
    auto *closeButton = namedButton(QStringLiteral("cmdClose"), QStringLiteral("Затвори"), bar);
    row->addStretch();
    row->addWidget(printButton);
    row->addWidget(closeButton);
    connect(printButton, &QPushButton::clicked, this, &ClaimsCheckWindow::printList);
    connect(closeButton, &QPushButton::clicked, this, &ClaimsCheckWindow::close);
    return bar;
}

void ClaimsCheckWindow::load(const QList<reports::ClaimFinding> &findings, const reports::Period &period,
                             const QString &medicName)
{
    m_findings = findings;
    m_period = period;
    m_medicName = medicName;
    m_periodLabel->setText(period.caption());
    m_doctorLabel->setText(QStringLiteral("д-р ") + medicName);
    m_summaryLabel->setText(reports::FindingsSummary(int(findings.size())));
    fillTree();
}

// The findings come in list order, by rule and then by patient, so each group is one run.
void ClaimsCheckWindow::fillTree()
{
    m_tree->clear();
    const auto sameRule = [](const auto &a, const auto &b) { return a.rule == b.rule; };
    const auto samePatient = [](const auto &a, const auto &b) { return a.rule == b.rule && a.EGN == b.EGN; };
    for (qsizetype first = 0; first < m_findings.size();) {
        const qsizetype ruleEnd = runEnd(m_findings, first, sameRule);
        const reports::ClaimRuleInfo &rule = reports::ClaimRuleOf(m_findings.at(first).rule);
        QTreeWidgetItem *ruleItem =
            addGroup(nullptr, QStringLiteral("%1 (%2): %3").arg(rule.title, rule.code).arg(ruleEnd - first));
        const bool unfolded = ruleEnd - first <= UnfoldedFindings;
        while (first < ruleEnd) {
            const reports::ClaimFinding &finding = m_findings.at(first);
            const qsizetype patientEnd = runEnd(m_findings, first, samePatient);
            QTreeWidgetItem *parent = ruleItem;
            if (!finding.EGN.isEmpty()) {
                parent = addGroup(ruleItem, QStringLiteral("%1  %2").arg(finding.EGN, finding.name).trimmed());
                parent->setData(0, EgnRole, finding.EGN);
                parent->setData(0, NameRole, finding.name);
            }
            for (; first < patientEnd; ++first)
                addFinding(parent, m_findings.at(first));
            parent->setExpanded(true);
        }
        ruleItem->setExpanded(unfolded);
    }
    if (m_tree->topLevelItemCount() > 0)
        m_tree->setCurrentItem(m_tree->topLevelItem(0));
}

// A rule's or a patient's row: one caption over the whole width.
QTreeWidgetItem *ClaimsCheckWindow::addGroup(QTreeWidgetItem *parent, const QString &caption)
{
    auto *item = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(m_tree);
    item->setText(0, caption);
    item->setFirstColumnSpanned(true);
    if (!parent) {
        QFont bold = item->font(0);
        bold.setBold(true);
        item->setFont(0, bold);
    }
    return item;
}

void ClaimsCheckWindow::addFinding(QTreeWidgetItem *parent, const reports::ClaimFinding &finding)
{
    auto *item = new QTreeWidgetItem(parent);
    item->setText(DateColumn, finding.date.isValid() ? dates::toTyped(finding.date) : QString());
    item->setText(SheetColumn, finding.ListID);
    item->setText(TextColumn, finding.text);
    item->setToolTip(TextColumn, finding.text);
    item->setData(0, EgnRole, finding.EGN);
    item->setData(0, NameRole, finding.name);
}

// A finding of no patient (an unknown package) has no window to open.
void ClaimsCheckWindow::openPatient(const QTreeWidgetItem *item)
{
    const QString egn = item->data(0, EgnRole).toString();
    if (egn.isEmpty())
        return;
    treatmentui::openChosenPatient(egn, item->data(0, NameRole).toString(), parentWidget() ? parentWidget() : this);
}

void ClaimsCheckWindow::printList()
{
    print::PrintPreview::showForm(reports::ClaimsCheckPage(m_findings, m_period, m_medicName), this);
}
