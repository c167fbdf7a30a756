#pragma once

#include "base/ui/OneWindow.h"
#include "reports/Period.h"
#include "reports/claimscheck/ClaimRules.h"

#include <QDialog>

class QLabel;
class QTreeWidget;
class QTreeWidgetItem;

// "Проверка на отчета": what the fund would refuse or question among a doctor's lines of a
// period, grouped by rule, then by patient. Enter or a double click on a patient or one of its
// findings opens the patient's treatment window, where the line is mended. The window only
// shows, so it closes without a question.
class ClaimsCheckWindow final : public QDialog, public OneWindow<ClaimsCheckWindow>
{
    Q_OBJECT
    friend class OneWindow<ClaimsCheckWindow>;

public:
    // Shows the findings, not modally; while the window is open a second call shows the new
    // findings in it and brings it forward.
    static ClaimsCheckWindow *open(QWidget *parent, const QList<reports::ClaimFinding> &findings,
                                   const reports::Period &period, const QString &medicName);

    explicit ClaimsCheckWindow(QWidget *parent = nullptr);

private:
    QWidget *buildHeading();
    QWidget *buildButtons();
    void load(const QList<reports::ClaimFinding> &findings, const reports::Period &period, const QString &medicName);
    void fillTree();
    QTreeWidgetItem *addGroup(QTreeWidgetItem *parent, const QString &caption);
    void addFinding(QTreeWidgetItem *parent, const reports::ClaimFinding &finding);
    void openPatient(const QTreeWidgetItem *item);
    void printList();

    QList<reports::ClaimFinding> m_findings;
    reports::Period m_period;
    QString m_medicName;
    QLabel *m_periodLabel = nullptr;
    QLabel *m_doctorLabel = nullptr;
    QLabel *m_summaryLabel = nullptr;
    QTreeWidget *m_tree = nullptr;
};
