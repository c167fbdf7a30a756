#include "shell/cli/ReportCommand.h"

#include "base/PrintOutput.h"
#include "base/RunState.h"
#include "diary/DiaryPrint.h"
#include "reports/claimscheck/ClaimsCheck.h"
#include "reports/claimscheck/ClaimsCheckPage.h"
#include "reports/forms/PrintedReports.h"
#include "reports/xml/StomatologyXml.h"
#include "shell/cli/DataFolderOption.h"
#include "shell/cli/EgnRuleOption.h"
#include "shell/cli/ParseArguments.h"
#include "store/Dates.h"
#include "store/Scratch.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QCommandLineParser>

namespace {

struct KindName final
{
    const char *name;
    reports::ReportKind kind;
};

const KindName kinds[] = {
    {"activity", reports::ReportKind::Activity},
    {"summary", reports::ReportKind::FundSummary},
    {"specification", reports::ReportKind::Specification},
    {"materials", reports::ReportKind::Materials},
    {"xml", reports::ReportKind::Xml},
};

std::optional<reports::ReportKind> kindNamed(const QString &name)
{
    for (const KindName &entry : kinds)
        if (name == QLatin1String(entry.name))
            return entry.kind;
    return std::nullopt;
}

QString usage()
{
    return QStringLiteral(
        "Usage: velmorata report activity|summary|specification|materials [--data-dir DIR] --doctor KOD\n"
        "                        --from DD.MM.YYYY --to DD.MM.YYYY [--pdf FILE] [--egn-rule public|system]\n"
        "       velmorata report xml [--data-dir DIR] --doctor KOD --from DD.MM.YYYY --to DD.MM.YYYY\n"
        "                        [--today DD.MM.YYYY] --out FILE [--egn-rule public|system]\n"
        "       velmorata report check [--data-dir DIR] --doctor KOD --from DD.MM.YYYY --to DD.MM.YYYY\n"
        "                        [--today DD.MM.YYYY] [--pdf FILE] [--egn-rule public|system]\n"
        "The report's name may come before or after the options.\n"
        "Without --pdf a printed report writes its rows on stdout, tab-separated.\n"
        "The check writes one finding per line (rule, EGN, date, sheet, text) and exits 0 when the\n"
        "period is clean, 1 with findings, 2 when it cannot check.\n");
}

const QString CheckName = QStringLiteral("check");

class ReportRun final
{
public:
    // `kind` is empty for the check of the claims, which makes no report of its own.
    ReportRun(std::optional<reports::ReportKind> kind, const QCommandLineParser &parser, QTextStream &out,
              QTextStream &err)
        : m_kind(kind), m_parser(parser), m_out(out), m_err(err), m_failure(kind ? 1 : 2)
    {
    }

    int execute(const reports::Period &period)
    {
        const auto doctor = diaryprint::DoctorName(store::clinicDb(), m_parser.value(QStringLiteral("doctor")));
        if (!doctor)
            return fail(doctor.error());
        run().CurrentMedicCode = m_parser.value(QStringLiteral("doctor"));
        run().CurrentMedicName = doctor.value();
        if (!m_kind)
            return check(period);
        return *m_kind == reports::ReportKind::Xml ? writeXml(period) : printed(period);
    }

private:
    std::optional<QDate> today()
    {
        if (!m_parser.isSet(QStringLiteral("today")))
            return QDate::currentDate();
        const auto given = dates::fromTyped(m_parser.value(QStringLiteral("today")));
        if (!given)
            (void)fail(QStringLiteral("--today is no date: ") + m_parser.value(QStringLiteral("today")), 2);
        return given;
    }

    int check(const reports::Period &period)
    {
        const auto day = today();
        if (!day)
            return 2;
        const auto findings = reports::CheckClaims(store::clinicDb(), period, run().CurrentMedicCode, *day);
        if (!findings)
            return fail(findings.error());
        if (m_parser.isSet(QStringLiteral("pdf"))) {
            const QString pdf = m_parser.value(QStringLiteral("pdf"));
            const auto page = reports::ClaimsCheckPage(findings.value(), period, run().CurrentMedicName);
            if (const Outcome written = print::writeFormPdf(page, pdf); !written)
                return fail(written.error());
            m_err << "Wrote " << pdf << Qt::endl; // stdout is the findings' alone
        }
        for (const reports::ClaimFinding &finding : findings.value()) {
            QStringList fields = reports::FindingFields(finding);
            for (QString &field : fields)
                field = escapeField(field);
            m_out << fields.join(u'\t') << '\n';
        }
        m_out.flush();
        return findings->isEmpty() ? 0 : 1;
    }

    int printed(const reports::Period &period)
    {
        const reports::ReportKind kind = *m_kind;
        if (const Outcome prepared = reports::PrepareReport(store::openedDatabases(), kind); !prepared)
            return fail(prepared.error());
        const auto built = reports::BuildReport(store::openedDatabases(), kind, period, run().CurrentMedicCode);
        if (!built)
            return fail(built.error());
        if (!built->isEmpty())
            m_err << "report: " << oneLine(built->message()) << Qt::endl;
        const int code = m_parser.isSet(QStringLiteral("pdf")) ? writePdf(period) : writeLines(period);
        // The scratch file is the run's own and holds nothing that is not derived: it goes with the
        // run, as it goes when the window closes, so that a report leaves the folder as it found it.
        store::DeleteScratchFile();
        return code;
    }

    int writePdf(const reports::Period &period)
    {
        const auto page = reports::ReportPage(store::openedDatabases(), *m_kind, period, run().CurrentMedicName);
        if (!page)
            return fail(page.error());
        const QString pdf = m_parser.value(QStringLiteral("pdf"));
        if (const Outcome written = print::writeFormPdf(page.value(), pdf); !written)
            return fail(written.error());
        m_out << "Wrote " << pdf << Qt::endl;
        return 0;
    }

    int writeLines(const reports::Period &period)
    {
        const auto lines = reports::ReportLines(store::openedDatabases(), *m_kind, period);
        if (!lines)
            return fail(lines.error());
        for (const QString &line : lines.value())
            m_out << line << '\n';
        m_out.flush();
        return 0;
    }

    int writeXml(const reports::Period &period)
    {
        const auto day = today();
        if (!day)
            return 2;
        const auto report = reports::BuildStomatologyXml(store::clinicDb(), period, run().CurrentMedicCode, *day);
        if (!report)
            return fail(report.error());
        const QString target = m_parser.value(QStringLiteral("out"));
        if (const Outcome written = reports::WriteXmlReport(report->document, target); !written)
            return fail(written.error());
        m_out << "Wrote " << target << ": " << report->sheets << " sheets" << Qt::endl;
        return 0;
    }

    // A report that cannot be made ends 1; a check that cannot check ends 2, as 1 means findings.
    int fail(const QString &message, std::optional<int> code = std::nullopt)
    {
        m_err << "report: " << oneLine(message) << Qt::endl;
        return code.value_or(m_failure);
    }

    std::optional<reports::ReportKind> m_kind;
    const QCommandLineParser &m_parser;
    QTextStream &m_out;
    QTextStream &m_err;
    int m_failure;
};

// The options that take a value, so that the report's name is found before them or after them.
const QStringList ValueOptions{QStringLiteral("data-dir"), QStringLiteral("egn-rule"), QStringLiteral("doctor"),
                               QStringLiteral("from"), QStringLiteral("to"), QStringLiteral("today"),
                               QStringLiteral("out"), QStringLiteral("pdf")};

QString missingOption(const QCommandLineParser &parser, std::optional<reports::ReportKind> kind)
{
    QStringList required{QStringLiteral("doctor"), QStringLiteral("from"), QStringLiteral("to")};
    if (kind == reports::ReportKind::Xml)
        required << QStringLiteral("out");
    for (const QString &name : required)
        if (parser.value(name).isEmpty())
            return name;
    return {};
}

} // namespace

int ReportCommand::execute(const QStringList &given, QTextStream &out, QTextStream &err)
{
    QStringList arguments = given;
    const QString kindName = takeFormWord(arguments, ValueOptions);
    const bool check = kindName == CheckName;
    const auto kind = kindNamed(kindName);
    if (!kind && !check)
        return refuseFormWord(kindName, arguments, name(), QStringLiteral("report"), usage(), out, err);
    QCommandLineParser parser;
    parser.setApplicationDescription(usage());
    parser.addHelpOption();
    parser.addOptions({
        dataFolderOption(),
        egnRuleOption(),
        {QStringLiteral("doctor"), QStringLiteral("The doctor's practice code (KodMedic)."), QStringLiteral("KOD")},
        {QStringLiteral("from"), QStringLiteral("The first day of the period."), QStringLiteral("DD.MM.YYYY")},
        {QStringLiteral("to"), QStringLiteral("The last day of the period."), QStringLiteral("DD.MM.YYYY")},
    });
    if (check || kind == reports::ReportKind::Xml)
        parser.addOption({QStringLiteral("today"), QStringLiteral("The reporting date (default: today)."),
                          QStringLiteral("DD.MM.YYYY")});
    if (kind == reports::ReportKind::Xml)
        parser.addOption({QStringLiteral("out"), QStringLiteral("The XML file to write."), QStringLiteral("FILE")});
    else
        parser.addOption({QStringLiteral("pdf"), QStringLiteral("Write the printed form to this PDF file."),
                          QStringLiteral("FILE")});
    if (const auto ended = parseArguments(parser, arguments, out, err, QStringLiteral("report: ")))
        return *ended;
    if (!applyEgnRuleOption(parser, err, QStringLiteral("report %1: ").arg(kindName)))
        return 2;
    if (const QString missing = missingOption(parser, kind); !missing.isEmpty()) {
        err << "report " << kindName << ": --" << missing << " is required" << Qt::endl;
        return 2;
    }
    const reports::PeriodEntry entry =
        reports::CheckPeriod(parser.value(QStringLiteral("from")), parser.value(QStringLiteral("to")));
    if (entry.check != reports::PeriodCheck::Accepted) {
        err << "report " << kindName << ": " << oneLine(entry.message) << Qt::endl;
        return 2;
    }
    const auto paths = dataFolderOf(parser, err, QStringLiteral("report %1: ").arg(kindName));
    if (!paths)
        return 2;
    const store::StoreOpening opened = store::openStore(*paths, {.practiceMustExist = true});
    if (!opened) {
        err << "report " << kindName << ": " << oneLine(opened.error()) << Qt::endl;
        return check ? 2 : 1;
    }
    const int code = ReportRun(kind, parser, out, err).execute(entry.period);
    store::closeStore();
    return code;
}
