#include "shell/cli/DoctorCommand.h"

#include "shell/cli/DataFolderOption.h"
#include "shell/cli/ParseArguments.h"

#include "admin/Doctors.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QCommandLineParser>
#include <QFileInfo>

#include <iostream>
#include <string>

#include <termios.h>
#include <unistd.h>

namespace {

// Keeps the terminal from echoing while a code is typed, and gives the echo back whatever happens.
class EchoOff final
{
  public:
    EchoOff()
    {
        m_active = tcgetattr(STDIN_FILENO, &m_saved) == 0;
        if (!m_active)
            return;
        termios quiet = m_saved;
        quiet.c_lflag &= ~tcflag_t(ECHO);
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &quiet);
    }
    ~EchoOff()
    {
        if (m_active)
            tcsetattr(STDIN_FILENO, TCSAFLUSH, &m_saved);
    }
    EchoOff(const EchoOff &) = delete;
    EchoOff &operator=(const EchoOff &) = delete;

  private:
    termios m_saved{};
    bool m_active = false;
};

std::optional<QString> readCodeFromStandardInput(const QString &prompt)
{
    const bool terminal = isatty(STDIN_FILENO) == 1;
    std::optional<EchoOff> quiet;
    if (terminal) {
        std::cerr << prompt.toStdString() << std::flush;
        quiet.emplace();
    }
    std::string line;
    const bool read = static_cast<bool>(std::getline(std::cin, line));
    if (terminal)
        std::cerr << std::endl;
    if (!read)
        return std::nullopt;
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
    return QString::fromStdString(line);
}

} // namespace

DoctorCommand::DoctorCommand()
    : DoctorCommand(readCodeFromStandardInput)
{
}

DoctorCommand::DoctorCommand(CodeReader readCode)
    : m_readCode(std::move(readCode))
{
}

int DoctorCommand::execute(const QStringList &arguments, QTextStream &out, QTextStream &err)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("doctor add: enters one more doctor. The access code (at least 6 characters) is asked twice\n"
                       "without echo; from a pipe or file it is read as the first two lines of standard input."));
    parser.addHelpOption();
    const QCommandLineOption names(QStringLiteral("name"), QStringLiteral("The doctor's names."),
                                   QStringLiteral("NAMES"));
    const QCommandLineOption number(QStringLiteral("number"), QStringLiteral("The doctor's number (EGN)."),
                                    QStringLiteral("EGN"));
    const QCommandLineOption practice(QStringLiteral("practice"), QStringLiteral("The practice code."),
                                      QStringLiteral("KOD"));
    parser.addOptions({dataFolderOption(), names, number, practice});
    parser.addPositionalArgument(QStringLiteral("add"), QStringLiteral("The one action: add a doctor."));
    if (const auto ended = parseArguments(parser, arguments, out, err, QStringLiteral("doctor: ")))
        return *ended;
    if (parser.positionalArguments() != QStringList{QStringLiteral("add")}) {
        err << "doctor: the one action is \"add\"" << Qt::endl;
        return 2;
    }
    const auto paths = dataFolderOf(parser, err, QStringLiteral("doctor: "));
    if (!paths)
        return 2;
    doctors::DoctorEntry entry{parser.value(names), parser.value(number), parser.value(practice), {}};
    const auto code = m_readCode(QStringLiteral("Код за достъп: "));
    const auto repeated = code ? m_readCode(QStringLiteral("Повторете кода за достъп: ")) : std::nullopt;
    entry.accessCode = code.value_or(QString());
    // The form's checks first, in its order, so that a missing name is told before the code.
    if (const QString failed = doctors::MedicAddCheck(entry); !failed.isEmpty()) {
        err << "doctor: " << failed << Qt::endl;
        return 1;
    }
    if (repeated != code) {
        err << "doctor: " << QStringLiteral("Кодът за достъп не е потвърден, опитайте отново!") << Qt::endl;
        return 1;
    }
    // Like the first-doctor form of the window, the first doctor starts the practice; a folder
    // that held none is named, so that a mistyped one is seen at once.
    const bool startsPractice = !QFileInfo::exists(paths->clinicDb);
    if (auto opened = store::openStore(*paths); !opened) {
        err << "doctor: " << opened.error() << Qt::endl;
        return 1;
    }
    const Outcome added = doctors::addDoctor(store::clinicDb(), entry);
    store::closeStore();
    if (!added) {
        err << "doctor: " << added.error() << Qt::endl;
        return 1;
    }
    if (startsPractice)
        out << "New practice in " << paths->folder << Qt::endl;
    out << "Doctor added: " << entry.names << ", practice code " << entry.practiceCode << Qt::endl;
    return 0;
}
