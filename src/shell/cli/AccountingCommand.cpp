#include "shell/cli/AccountingCommand.h"

#include "reports/forms/Accounting.h"
#include "shell/cli/DataFolderOption.h"
#include "shell/cli/ParseArguments.h"
#include "store/Dates.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QCommandLineParser>

namespace {

const QString Book = QStringLiteral("book");
const QString Unbook = QStringLiteral("unbook");

// The IDs of one option, or the first text that is none.
std::optional<QList<qint64>> lineIds(const QStringList &values, QString *bad)
{
    QList<qint64> ids;
    for (const QString &value : values) {
        bool ok = false;
        const qint64 id = value.toLongLong(&ok);
        if (!ok || id <= 0) {
            *bad = value;
            return std::nullopt;
        }
        ids << id;
    }
    return ids;
}

Outcome applyMarks(const QList<qint64> &booked, const QList<qint64> &unbooked)
{
    for (const qint64 id : booked)
        if (const Outcome saved = accounting::SaveBooking(store::clinicDb(), id, true); !saved)
            return saved;
    for (const qint64 id : unbooked)
        if (const Outcome saved = accounting::SaveBooking(store::clinicDb(), id, false); !saved)
            return saved;
    return Outcome::success();
}

void printPeriod(const accounting::BookPeriod &period, QTextStream &out)
{
    out << "ID\tДата\tКод\tУслуга\tЦена\tЗав.\tЕГН\n";
    for (const accounting::BookLine &line : period.lines)
        out << line.ID << '\t' << dates::toTyped(line.Data) << '\t' << line.KodHelp << '\t' << line.TextHelp << '\t'
            << accounting::LevaText(line.cents) << '\t' << (line.Schet ? "1" : "0") << '\t' << line.EGN << '\n';
    out << "Всичко\t" << accounting::LevaText(period.sums.totalCents) << '\n'
        << "Заведени\t" << accounting::LevaText(period.sums.bookedCents) << '\n'
        << "Оставащи\t" << accounting::LevaText(period.sums.remainingCents()) << Qt::endl;
}

} // namespace

int AccountingCommand::execute(const QStringList &arguments, QTextStream &out, QTextStream &err)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Lists the service lines of a period (every doctor) with their booking mark (Зав.) and the\n"
                       "sums Всичко, Заведени, Оставащи; --book and --unbook set the mark of a line by its ID first."));
    parser.addHelpOption();
    parser.addOptions({
        dataFolderOption(),
        {QStringLiteral("from"), QStringLiteral("The first day of the period."), QStringLiteral("DD.MM.YYYY")},
        {QStringLiteral("to"), QStringLiteral("The last day of the period."), QStringLiteral("DD.MM.YYYY")},
        {Book, QStringLiteral("Book the line with this ID (may be repeated)."), QStringLiteral("ID")},
        {Unbook, QStringLiteral("Unbook the line with this ID (may be repeated)."), QStringLiteral("ID")},
    });
    if (const auto ended = parseArguments(parser, arguments, out, err, QStringLiteral("accounting: ")))
        return *ended;
    const reports::PeriodEntry entry =
        reports::CheckPeriod(parser.value(QStringLiteral("from")), parser.value(QStringLiteral("to")));
    if (entry.check != reports::PeriodCheck::Accepted) {
        err << "accounting: "
            << (entry.message.isEmpty() ? QStringLiteral("--from and --to are required") : oneLine(entry.message))
            << Qt::endl;
        return 2;
    }
    QString bad;
    const auto booked = lineIds(parser.values(Book), &bad);
    const auto unbooked = booked ? lineIds(parser.values(Unbook), &bad) : std::nullopt;
    if (!booked || !unbooked) {
        err << "accounting: \"" << bad << "\" is no line ID" << Qt::endl;
        return 2;
    }
    const auto paths = dataFolderOf(parser, err, QStringLiteral("accounting: "));
    if (!paths)
        return 2;
    // Marks are set only on lines of a practice: a folder without one is refused, booking or not.
    if (const auto opened = store::openStore(*paths, {.practiceMustExist = true}); !opened) {
        err << "accounting: " << oneLine(opened.error()) << Qt::endl;
        return 1;
    }
    int code = 0;
    if (const Outcome marked = applyMarks(*booked, *unbooked); !marked) {
        err << "accounting: " << oneLine(marked.error()) << Qt::endl;
        code = 1;
    } else if (const auto period = accounting::LoadBookPeriod(store::clinicDb(), entry.period); !period) {
        err << "accounting: " << oneLine(period.error()) << Qt::endl;
        code = 1;
    } else {
        printPeriod(period.value(), out);
    }
    store::closeStore();
    return code;
}
