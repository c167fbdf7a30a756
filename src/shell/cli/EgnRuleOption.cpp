#include "shell/cli/EgnRuleOption.h"

#include "patients/EgnRuleSetting.h"

namespace {
const QString OptionName = QStringLiteral("egn-rule");
}

QCommandLineOption egnRuleOption()
{
    return {OptionName,
            QStringLiteral("The rule for personal numbers: system (the program's: born 1910-2009) or public "
                           "(also born from 2010 and in the 1800s). Default: the practice's setting."),
            QStringLiteral("public|system")};
}

std::optional<EgnRule> egnRuleOf(const QCommandLineParser &parser, QTextStream &err, const QString &prefix, bool &known)
{
    known = true;
    if (!parser.isSet(OptionName))
        return std::nullopt;
    const auto rule = egnrule::ruleNamed(parser.value(OptionName));
    if (!rule) {
        err << prefix << "--egn-rule takes public or system, not \"" << parser.value(OptionName) << "\"" << Qt::endl;
        known = false;
    }
    return rule;
}

bool applyEgnRuleOption(const QCommandLineParser &parser, QTextStream &err, const QString &prefix)
{
    bool known = true;
    egnrule::setRuleOfRun(egnRuleOf(parser, err, prefix, known));
    return known;
}
