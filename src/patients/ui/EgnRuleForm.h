#pragma once

#include "base/ui/OneWindow.h"

#include <QDialog>

class QRadioButton;

// "Правило за ЕГН": which personal numbers the practice takes, for every workstation. The
// system's rule stays the default; the public one lets in the children born from 2010.
class EgnRuleForm final : public QDialog, public OneWindow<EgnRuleForm>
{
    Q_OBJECT
    friend class OneWindow<EgnRuleForm>;

public:
    // Shows the form modally; while it is open a second call only brings it forward.
    static void open(QWidget *parent = nullptr);

    explicit EgnRuleForm(QWidget *parent = nullptr);

private:
    void save();

    QRadioButton *m_system = nullptr;
    QRadioButton *m_public = nullptr;
};
