#include "shell/cli/EgnCommand.h"

#include "shell/cli/EgnRuleOption.h"
#include "shell/cli/ParseArguments.h"

#include "patients/EgnRules.h"
#include "store/Dates.h"

#include <QCommandLineParser>

QString EgnCommand::summary() const { return QStringLiteral("check personal numbers (EGN)"); }

QString EgnCommand::describe(const QString &egn, const QDate &today, EgnRule rule)
{
    const auto flag = [](bool fault) { return fault ? QStringLiteral("1") : QStringLiteral("0"); };
    const std::optional<bool> over = EgnOverEighteen(egn, today, rule);
    const QString adult = over ? flag(*over) : QStringLiteral("?");
    // The number fault comes last, so that the columns a script reads keep their places.
    QStringList fields{egn, flag(EgnDateBad(egn, rule)), flag(EgnMonthBad(egn, rule)), flag(EgnCheckDigitBad(egn)),
                       EgnBirthDateText(egn, rule), EgnSex(egn), adult, flag(EgnNotTenDigits(egn))};
    for (QString &field : fields)
        field = escapeField(field);
    return fields.join(u'\t');
}

int EgnCommand::execute(const QStringList &arguments, QTextStream &out, QTextStream &err)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "For each NUMBER prints: number, date fault, month fault, check digit fault (0/1), birth date text,\n"
        "sex (М/Ж), over eighteen (1/0, ? when the number names no birth date), and number fault (1 when\n"
        "it is not ten digits, which the card refuses whatever the three tests say), separated by tabs."));
    parser.addHelpOption();
    const QCommandLineOption todayOption(QStringLiteral("today"), QStringLiteral("The day to judge the age on."),
                                         QStringLiteral("DD.MM.YYYY"));
    parser.addOption(todayOption);
    parser.addOption(egnRuleOption());
    parser.addPositionalArgument(QStringLiteral("NUMBER"), QStringLiteral("Personal numbers to check."),
                                 QStringLiteral("NUMBER..."));
    if (const auto ended = parseArguments(parser, arguments, out, err))
        return *ended;
    QDate today = QDate::currentDate();
    if (parser.isSet(todayOption)) {
        const auto given = dates::fromTyped(parser.value(todayOption));
        if (!given) {
            err << "egn: --today wants a date as DD.MM.YYYY, not " << parser.value(todayOption) << Qt::endl;
            return 2;
        }
        today = *given;
    }
    bool known = true;
    const EgnRule rule = egnRuleOf(parser, err, QStringLiteral("egn: "), known).value_or(EgnRule::System);
    if (!known)
        return 2;
    if (parser.positionalArguments().isEmpty()) {
        err << "egn: give at least one number" << Qt::endl;
        return 2;
    }
    for (const QString &egn : parser.positionalArguments())
        out << describe(egn, today, rule) << '\n';
    out.flush();
    return 0;
}
