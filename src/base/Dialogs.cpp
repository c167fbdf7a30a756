#include "base/Dialogs.h"

#include "base/Calendar.h"

namespace {

class SilentProgress final : public ProgressPort
{
public:
    void setValue(int) override {}
    bool stopped() const override { return false; }
};

// Until a real port is installed (command line, start-up), messages go to stderr and questions
// are answered with the safe "no".
class ConsoleDialogs final : public DialogPort
{
public:
    void information(const QString &message) override { qWarning("%s", qPrintable(displayText(message))); }
    bool askQuestion(const QString &message, const QString &) override
    {
        qWarning("%s", qPrintable(displayText(message)));
        return false;
    }
    bool confirmExit() override { return false; }
    DateChoice chooseDate() override { return {false, calendar::today().addDays(1)}; }
    std::unique_ptr<ProgressPort> progress(const QString &, int) override { return std::make_unique<SilentProgress>(); }
};

DialogPort *&installed()
{
    static DialogPort *port = nullptr;
    return port;
}

} // namespace

DialogPort &dialogs()
{
    static ConsoleDialogs console;
    return installed() ? *installed() : console;
}

void setDialogPort(DialogPort *port) { installed() = port; }

QString displayText(const QString &message)
{
    QString shown = message;
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    shown.replace(QChar(13), QChar(10));
    return shown;
}
