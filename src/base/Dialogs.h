#pragma once

#include <QDate>
#include <QString>

#include <memory>

// The shared dialogs as the logic and the screens reach them. The program installs the real
// windows; tests install a port that answers from a queue. Every screen and routine asks
// through dialogs(), never by building a dialog window itself.

// A running ProgDialog: the caller moves the bar and asks whether the user stopped it.
class ProgressPort
{
public:
    virtual ~ProgressPort() = default;
    virtual void setValue(int value) = 0; // Min is 1, Max the number of rows
    virtual bool stopped() const = 0;     // nStop
};

struct DateChoice final
{
    bool lChoice = false;
    QDate dData;
};

class DialogPort
{
public:
    virtual ~DialogPort() = default;
    // InfDialog: shows the message modally; beeps when it opens.
    virtual void information(const QString &message) = 0;
    // QuesDialog: true for "ДА" (nKod 1), false for "НЕ". Its caption is "Въпрос" unless the
    // caller names another (the delete of a patient asks under "ВНИМАНИЕ!").
    bool question(const QString &message, const QString &title = QStringLiteral("Въпрос"))
    {
        return askQuestion(message, title);
    }
    // ExitDialog: true when the user confirms leaving the program.
    virtual bool confirmExit() = 0;
    // ChoiceDialog: the date for which the schedule is to be printed.
    virtual DateChoice chooseDate() = 0;
    // ProgDialog, not modal, for a walk over `rows` rows.
    virtual std::unique_ptr<ProgressPort> progress(const QString &message, int rows) = 0;

protected:
    virtual bool askQuestion(const QString &message, const QString &title) = 0;
};

DialogPort &dialogs();
// Installs the port; the caller keeps ownership. nullptr puts back the silent default.
void setDialogPort(DialogPort *port);

// Messages are written with a carriage return between two lines; windows show a line break.
QString displayText(const QString &message);
