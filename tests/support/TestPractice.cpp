#include "TestPractice.h"

#include "admin/AccessCodes.h"
#include "patients/EgnRules.h"
#include "base/Calendar.h"
#include "base/RunState.h"
#include "store/Dates.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QFile>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTest>

namespace {

class CountingProgress final : public ProgressPort
{
public:
    void setValue(int) override {}
    bool stopped() const override { return false; }
};

} // namespace

void ScriptedDialogs::information(const QString &message) { messages << message; }

bool ScriptedDialogs::askQuestion(const QString &message, const QString &title)
{
    questions << message;
    questionTitles << title;
    if (answers.empty())
        return false;
    const bool answer = answers.front();
    answers.pop_front();
    return answer;
}

bool ScriptedDialogs::confirmExit()
{
    if (exitAnswers.empty())
        return false;
    const bool answer = exitAnswers.front();
    exitAnswers.pop_front();
    return answer;
}

DateChoice ScriptedDialogs::chooseDate()
{
    if (dates.empty())
        return {false, calendar::today().addDays(1)};
    const DateChoice choice = dates.front();
    dates.pop_front();
    return choice;
}

std::unique_ptr<ProgressPort> ScriptedDialogs::progress(const QString &, int)
{
    ++progressShown;
    return std::make_unique<CountingProgress>();
}

TestPractice::TestPractice(const QDate &today)
{
    const auto paths = store::DataPaths::inFolder(m_dir.path());
    initRunState(paths);
    const auto opened = store::openStore(paths);
    if (!opened)
        qFatal("test practice: %s", qPrintable(opened.error()));
    setDialogPort(&m_dialogs);
    calendar::fixToday(today);
}

TestPractice::~TestPractice()
{
    setDialogPort(nullptr);
    calendar::fixToday({});
    store::closeStore();
}

void TestPractice::addDoctor(const QString &names, const QString &code, const QString &accessCode)
{
    store::run(store::clinicDb(), QStringLiteral("INSERT INTO Medic (Names, EGN, KodMedic, Password) VALUES (?,?,?,?)"),
               {names, QStringLiteral("7501010000"), code, accesscodes::hashForStorage(accessCode)});
}

void TestPractice::addNumberedPatients(int count, int first)
{
    for (int n = first; n < first + count; ++n)
        addPatient(validEgn(QDate(1950, 1, 1).addDays(n)), QStringLiteral("Пациент %1").arg(n), QStringLiteral("1111"));
}

void TestPractice::addPatient(const QString &egn, const QString &names, const QString &doctorCode)
{
    store::run(store::clinicDb(), QStringLiteral("INSERT INTO Pacients (EGN, Names, LKod) VALUES (?,?,?)"),
               {egn, names, doctorCode});
    store::run(store::clinicDb(), QStringLiteral("INSERT INTO Dental (EGN) VALUES (?)"), {egn});
}

void TestPractice::addService(const QString &egn, const QDate &date, const QString &kodHelp,
                              const QString &doctorCode, const QString &listId)
{
    store::run(store::clinicDb(),
               QStringLiteral("INSERT INTO Help (EGN, Data, KodHelp, KodMedic, ListID, ZK) VALUES (?,?,?,?,?,1)"),
               {egn, dates::toIso(date), kodHelp, doctorCode, listId});
}

void TestPractice::addServices(int count, const QString &egn, const QDate &date, const QString &kodHelp,
                               const QString &doctorCode)
{
    store::Transaction transaction(store::clinicDb());
    for (int i = 0; i < count; ++i)
        addService(egn, date, kodHelp, doctorCode);
    transaction.commit();
}

int TestPractice::count(const QString &sql) const { return store::scalar(store::clinicDb(), sql).toInt(); }

QStringList TestPractice::row(const QString &sql, std::initializer_list<QVariant> values) const
{
    QSqlQuery query = store::run(store::clinicDb(), sql, values);
    QStringList texts;
    if (query.next())
        for (int i = 0; i < query.record().count(); ++i)
            texts << query.value(i).toString();
    return texts;
}

QString validEgn(const QDate &born, bool male)
{
    const int monthCode = born.year() >= 2000 ? born.month() + 40 : born.month();
    const QString nine = QStringLiteral("%1%2%3%4")
                             .arg(born.year() % 100, 2, 10, QChar(u'0'))
                             .arg(monthCode, 2, 10, QChar(u'0'))
                             .arg(born.day(), 2, 10, QChar(u'0'))
                             .arg(male ? 124 : 125, 3, 10, QChar(u'0'));
    return nine + QString::number(EgnCheckDigit(nine));
}

bool TestPractice::copyFilesTo(const QString &folder) const
{
    store::run(store::clinicDb(), QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)"));
    for (const QString &file : {QStringLiteral("velmorata.db"), QStringLiteral("data.db")})
        if (!QFile::copy(m_dir.filePath(file), folder + u'/' + file))
            return false;
    return true;
}
