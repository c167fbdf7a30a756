#pragma once

#include "base/Dialogs.h"

#include <QDate>
#include <QStringList>
#include <QTemporaryDir>

#include <deque>

// Answers the shared dialogs without windows: questions and date choices are taken from
// queues the test fills; every message shown is recorded.
class ScriptedDialogs final : public DialogPort
{
public:
    void information(const QString &message) override;
    bool confirmExit() override;
    DateChoice chooseDate() override;
    std::unique_ptr<ProgressPort> progress(const QString &message, int rows) override;

    std::deque<bool> answers;      // for question(); an empty queue answers "НЕ"
    std::deque<bool> exitAnswers;  // for confirmExit(); empty: stay
    std::deque<DateChoice> dates;  // for chooseDate(); empty: cancelled
    QStringList messages;          // everything shown by information()
    QStringList questions;         // everything asked by question()
    QStringList questionTitles;    // the caption of each question
    int progressShown = 0;

protected:
    bool askQuestion(const QString &message, const QString &title) override;
};

// A fresh practice for one test: a temporary data folder with new databases open under the
// program's connection names, the run-wide values fixed from it, scripted dialogs installed
// and "today" fixed. Everything is undone when it goes out of scope.
class TestPractice final
{
public:
    explicit TestPractice(const QDate &today = QDate(2026, 3, 15));
    ~TestPractice();
    TestPractice(const TestPractice &) = delete;
    TestPractice &operator=(const TestPractice &) = delete;

    QString folder() const { return m_dir.path(); }
    ScriptedDialogs &dialogs() { return m_dialogs; }

    // Fixture builders; the access code is stored hashed, as the program stores it.
    void addDoctor(const QString &names, const QString &code, const QString &accessCode = QStringLiteral("1234"));
    void addPatient(const QString &egn, const QString &names, const QString &doctorCode);
    // `count` patients of doctor 1111, "Пациент <n>" born on the n-th day after 01.01.1950, n
    // counted from `first`.
    void addNumberedPatients(int count, int first = 0);
    void addService(const QString &egn, const QDate &date, const QString &kodHelp, const QString &doctorCode,
                    const QString &listId = QStringLiteral("000001"));
    // `count` lines of one code on one day, stored in one transaction: a full day of work.
    void addServices(int count, const QString &egn, const QDate &date, const QString &kodHelp,
                     const QString &doctorCode);
    // Writes the open files out whole and copies velmorata.db and data.db into `folder`, so that
    // a command of the command line can open them there; false when a copy fails.
    [[nodiscard]] bool copyFilesTo(const QString &folder) const;
    int count(const QString &sql) const; // SELECT COUNT(*) ... on the clinic database
    // The first row a query on the clinic database gives, each value as text; empty without a row.
    QStringList row(const QString &sql, std::initializer_list<QVariant> values = {}) const;

private:
    QTemporaryDir m_dir;
    ScriptedDialogs m_dialogs;
};

// Valid personal numbers for tests: born on the day, male or female.
QString validEgn(const QDate &born, bool male = true);
