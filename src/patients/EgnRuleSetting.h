#pragma once

#include "patients/EgnRules.h"
#include "store/Result.h"

#include <QSqlDatabase>
#include <QString>

#include <optional>

// Which rule of the personal number the practice works by. It is kept in the clinic database,
// so that every workstation takes the same numbers and reads the same ages from them; a
// practice that never chose one works by the system's rule.
namespace egnrule {

// The practice's choice. Throws store::SqlError.
EgnRule storedRule(const QSqlDatabase &clinic);
Outcome storeRule(const QSqlDatabase &clinic, EgnRule rule);

// The rule of this run: the one the command line gave (--egn-rule), else the practice's.
// Throws store::SqlError.
EgnRule practiceRule(const QSqlDatabase &clinic);
void setRuleOfRun(std::optional<EgnRule> rule);

// "system" and "public", as the command line names them; nullopt for any other word.
std::optional<EgnRule> ruleNamed(const QString &word);

// Where the setting is, for a number that the system's rule refuses and the public rule takes.
QString whereTheSettingIs();
// Whether `egn` is such a number.
bool onlyThePublicRuleTakes(const QString &egn);

} // namespace egnrule
