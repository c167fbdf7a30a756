#include "shell/ui/WidgetDialogs.h"

#include "shell/ui/SharedDialogs.h"

#include <QApplication>

namespace {

QWidget *owner() { return QApplication::activeWindow(); }

class WindowProgress final : public ProgressPort
{
public:
    WindowProgress(const QString &message, int rows)
        : m_dialog(message, rows, owner())
    {
        m_dialog.show();
        m_dialog.repaint();
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
    void setValue(int value) override { m_dialog.setValue(value); }
    bool stopped() const override { return m_dialog.nStop() == 1; }

private:
    ProgDialog m_dialog;
};

} // namespace

void WidgetDialogs::information(const QString &message)
{
    InfDialog dialog(message, owner());
    dialog.exec();
}

bool WidgetDialogs::askQuestion(const QString &message, const QString &title)
{
    QuesDialog dialog(message, owner());
    dialog.setWindowTitle(title);
    dialog.exec();
    return dialog.nKod() == 1;
}

bool WidgetDialogs::confirmExit()
{
    ExitDialog dialog(owner());
    return dialog.exec() == QDialog::Accepted;
}

DateChoice WidgetDialogs::chooseDate()
{
    ChoiceDialog dialog(owner());
    dialog.exec();
    return {dialog.lChoice(), dialog.dData()};
}

std::unique_ptr<ProgressPort> WidgetDialogs::progress(const QString &message, int rows)
{
    return std::make_unique<WindowProgress>(message, rows);
}
