#include "patients/EgnRuleSetting.h"

#include "store/Sql.h"

namespace egnrule {
namespace {

const QString SettingName = QStringLiteral("EgnRule");
const QString SystemWord = QStringLiteral("system");
const QString PublicWord = QStringLiteral("public");

std::optional<EgnRule> &ruleOfRun()
{
    static std::optional<EgnRule> rule;
    return rule;
}

bool faultByRules(const QString &egn, EgnRule rule)
{
    return EgnDateBad(egn, rule) || EgnMonthBad(egn, rule) || EgnCheckDigitBad(egn);
}

} // namespace

EgnRule storedRule(const QSqlDatabase &clinic)
{
    const QVariant value = store::scalar(
        clinic, QStringLiteral("SELECT Value FROM PracticeSettings WHERE Name = ? ORDER BY ID"), {SettingName});
    return value.toString() == PublicWord ? EgnRule::Public : EgnRule::System;
}

Outcome storeRule(const QSqlDatabase &clinic, EgnRule rule)
{
    const QString word = rule == EgnRule::Public ? PublicWord : SystemWord;
    try {
        store::Transaction transaction(clinic);
        store::run(clinic, QStringLiteral("DELETE FROM PracticeSettings WHERE Name = ?"), {SettingName});
        store::run(clinic, QStringLiteral("INSERT INTO PracticeSettings (Name, Value) VALUES (?, ?)"),
                   {SettingName, word});
        transaction.commit();
    } catch (const store::SqlError &error) {
        return Outcome::failure(QStringLiteral("Правилото за ЕГН не е записано.") + QChar(13) + error.message());
    }
    return Outcome::success();
}

EgnRule practiceRule(const QSqlDatabase &clinic)
{
    return ruleOfRun() ? *ruleOfRun() : storedRule(clinic);
}

void setRuleOfRun(std::optional<EgnRule> rule)
{
    ruleOfRun() = rule;
}

std::optional<EgnRule> ruleNamed(const QString &word)
{
    if (word == SystemWord)
        return EgnRule::System;
    if (word == PublicWord)
        return EgnRule::Public;
    return std::nullopt;
}

QString whereTheSettingIs()
{
    return QStringLiteral("Номерът е верен по общото правило за ЕГН (родени от 2010 г. или през 19 век). "
                          "За да го приема, изберете общото правило в \"Служебна\" → \"Правило за ЕГН\".");
}

bool onlyThePublicRuleTakes(const QString &egn)
{
    return faultByRules(egn, EgnRule::System) && !faultByRules(egn, EgnRule::Public);
}

} // namespace egnrule
