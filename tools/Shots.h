#pragma once

// What the screenshot tools share: the demo practice opened with its first doctor signed in,
// an answer to every question, since nobody is there to read a window, and a window saved as
// a picture once it has painted.
#include "base/Dialogs.h"
#include "base/RunState.h"
#include "store/Sql.h"
#include "store/Store.h"
#include "treatment/Minutes.h"

#include <QCoreApplication>
#include <QTextStream>
#include <QWidget>

class AnsweringAlways final : public DialogPort
{
public:
    explicit AnsweringAlways(bool answer)
        : m_answer(answer)
    {
    }
    void information(const QString &message) override { QTextStream(stderr) << message << '\n'; }
    bool confirmExit() override { return true; }
    DateChoice chooseDate() override { return {}; }
    std::unique_ptr<ProgressPort> progress(const QString &, int) override { return nullptr; }

protected:
    bool askQuestion(const QString &, const QString &) override { return m_answer; }

private:
    bool m_answer;
};

inline bool saveShot(QWidget *window, const QString &file)
{
    QCoreApplication::processEvents();
    return window->grab().save(file);
}

// Opens the practice in `folder` and signs its first doctor in; false (with the reason on
// stderr) when it cannot.
inline bool openDemoPractice(const char *folder)
{
    const auto paths = store::DataPaths::inFolder(QString::fromLocal8Bit(folder));
    initRunState(paths);
    if (const auto opened = store::openStore(paths); !opened) {
        QTextStream(stderr) << opened.error() << '\n';
        return false;
    }
    QSqlQuery doctor = store::run(store::clinicDb(), QStringLiteral("SELECT KodMedic FROM Medic ORDER BY ID"));
    if (!doctor.next())
        return false;
    run().CurrentMedicCode = doctor.value(0).toString();
    (void)RecalcMinutesLeft(store::clinicDb());
    return true;
}
