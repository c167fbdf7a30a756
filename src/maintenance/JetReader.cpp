#include "maintenance/JetReader.h"

#include "maintenance/JetFile.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <functional>

#include <sys/resource.h>

namespace jet {
namespace {

const QByteArray AnswerMark = QByteArrayLiteral("velmorata-jet-1");
constexpr auto StreamVersion = QDataStream::Qt_6_4;

QString &readerProgram()
{
    static QString program;
    return program;
}

// Enough for any practice's file; a damaged one that makes libmdb allocate without end is
// stopped here rather than by the system's out-of-memory killer.
constexpr rlim_t ChildMemoryBytes = rlim_t(4) << 30;

// A whole practice's file reads in seconds; a child that takes far longer is going round a
// damaged page chain.
int timeLimitMs(const QString &path)
{
    return 60000 + int(qMin<qint64>(QFileInfo(path).size() / 1024, 600000));
}

// What the child writes: the mark, whether it read, then the message or the content.
void writeAnswer(const std::function<void(QDataStream &)> &content)
{
    QFile out;
    if (!out.open(stdout, QIODevice::WriteOnly))
        return;
    QDataStream stream(&out);
    stream.setVersion(StreamVersion);
    stream << AnswerMark;
    content(stream);
}

// Runs the child for one request; on its answer, `readContent` takes what follows the mark.
// Nothing, or the message that names the file, when it did not answer whole.
Outcome ask(const QString &path, const QStringList &request, const std::function<void(QDataStream &)> &readContent)
{
    // libmdb's own warnings on a damaged file are for its developers, not for the person here:
    // the answer's message says what the file gets.
    QProcess child;
    child.setStandardErrorFile(QProcess::nullDevice());
    child.setChildProcessModifier([] {
        const rlimit memory{ChildMemoryBytes, ChildMemoryBytes};
        ::setrlimit(RLIMIT_AS, &memory);
        // A crash on a patient file must not leave a core file with its rows behind.
        const rlimit noCore{0, 0};
        ::setrlimit(RLIMIT_CORE, &noCore);
    });
    const QString program = readerProgram().isEmpty() ? QCoreApplication::applicationFilePath() : readerProgram();
    child.start(program, QStringList{QString::fromLatin1(ReaderCommand)} + request);
    if (!child.waitForStarted())
        return Outcome::failure(QStringLiteral("Файлът %1 не може да се прочете: програмата за четене на файлове "
                                               "на Access %2 не се стартира. Инсталирайте програмата отново.")
                                    .arg(path, program));
    child.closeWriteChannel();
    const bool finished = child.waitForFinished(timeLimitMs(path));
    if (!finished) {
        child.kill();
        child.waitForFinished();
    }
    if (!finished || child.exitStatus() != QProcess::NormalExit || child.exitCode() != 0)
        return Outcome::failure(damagedJetFile(path));
    const QByteArray answer = child.readAllStandardOutput();
    QDataStream stream(answer);
    stream.setVersion(StreamVersion);
    QByteArray mark;
    bool read = false;
    stream >> mark >> read;
    if (stream.status() != QDataStream::Ok || mark != AnswerMark)
        return Outcome::failure(damagedJetFile(path));
    if (!read) {
        QString message;
        stream >> message;
        return Outcome::failure(stream.status() == QDataStream::Ok ? message : damagedJetFile(path));
    }
    readContent(stream);
    if (stream.status() != QDataStream::Ok || !stream.atEnd())
        return Outcome::failure(damagedJetFile(path));
    return Outcome::success();
}

class ChildJetFile final : public TableSource
{
public:
    ChildJetFile(QString path, QStringList tables, QString password)
        : m_path(std::move(path))
        , m_tables(std::move(tables))
        , m_password(std::move(password))
    {
    }

    QString path() const override { return m_path; }
    QStringList tables() const override { return m_tables; }
    QString storedPassword() const override { return m_password; }

    Result<Table> read(const QString &name) override
    {
        if (indexOfName(m_tables, name) < 0)
            return Result<Table>::failure(QStringLiteral("Във файла %1 липсва таблицата %2.").arg(m_path, name));
        Table table;
        const Outcome read = ask(m_path, {m_path, name}, [&table](QDataStream &stream) {
            stream >> table.name >> table.columns >> table.rows;
        });
        if (!read)
            return Result<Table>::failure(read.error());
        return Result<Table>::success(std::move(table));
    }

private:
    QString m_path;
    QStringList m_tables;
    QString m_password;
};

int serveFailure(const QString &message)
{
    writeAnswer([&](QDataStream &stream) { stream << false << message; });
    return 0;
}

} // namespace

void setReaderProgram(const QString &program) { readerProgram() = program; }

int serveReaderRequest(const QStringList &arguments)
{
    if (arguments.isEmpty() || arguments.size() > 2)
        return 2;
    auto file = openJetFileInProcess(arguments.first());
    if (!file)
        return serveFailure(file.error());
    if (arguments.size() == 1) {
        writeAnswer([&](QDataStream &stream) {
            stream << true << file.value()->tables() << file.value()->storedPassword();
        });
        return 0;
    }
    auto table = file.value()->read(arguments.at(1));
    if (!table)
        return serveFailure(table.error());
    writeAnswer([&](QDataStream &stream) { stream << true << table->name << table->columns << table->rows; });
    return 0;
}

Result<std::unique_ptr<TableSource>> openJetFile(const QString &path)
{
    using Opened = Result<std::unique_ptr<TableSource>>;
    QStringList tables;
    QString password;
    const Outcome read = ask(path, {path}, [&](QDataStream &stream) { stream >> tables >> password; });
    if (!read)
        return Opened::failure(read.error());
    return Opened::success(std::make_unique<ChildJetFile>(path, tables, password));
}

} // namespace jet
