#include "reports/claimscheck/ClaimsData.h"

#include "store/Dates.h"
#include "treatment/Minutes.h"

#include <QRegularExpression>

namespace reports::claims {
namespace {

// The first of the doctor's lines of the period on each patient's sheet of a year.
QList<const ServiceLine *> FirstLinesOfSheets(const ClaimsData &data)
{
    QSet<QString> seen;
    QList<const ServiceLine *> firsts;
    for (const ServiceLine &line : data.lines) {
        const QString key = QStringList{line.EGN, line.ListID, QString::number(line.Data.year())}.join(QChar(0x1f));
        if (!seen.contains(key)) {
            seen.insert(key);
            firsts << &line;
        }
    }
    return firsts;
}

// Sheet numbers run per doctor and year from 000001 to 032767, always six digits.
QString SeriesFault(const QString &listId)
{
    static const QRegularExpression sixDigits(QStringLiteral("^[0-9]{6}$"));
    if (listId.trimmed().isEmpty())
        return QStringLiteral("Ред без номер на амбулаторен лист");
    if (!sixDigits.match(listId).hasMatch())
        return QStringLiteral("Номерът „%1“ не е от шест цифри").arg(listId);
    const int number = listId.toInt();
    if (number == 0)
        return QStringLiteral("Номер 000000: поредицата започва от 000001");
    if (number > 32767)
        return QStringLiteral("Номер %1 е след последния в годината, 032767").arg(listId);
    return {};
}

void CheckSheets(const ClaimsData &data, const QList<const ServiceLine *> &firsts, QList<ClaimFinding> &findings)
{
    QHash<QPair<int, QString>, QStringList> holders;
    for (const SheetHolder &sheet : data.sheets)
        if (!sheet.ListID.trimmed().isEmpty())
            holders[{sheet.year, sheet.ListID}] << sheet.EGN;
    for (const ServiceLine *line : firsts) {
        if (const QString fault = SeriesFault(line->ListID); !fault.isEmpty())
            findings << LineFinding(ClaimRule::SheetOutOfSeries, *line, fault);
        QStringList others = holders.value({line->Data.year(), line->ListID});
        others.removeAll(line->EGN);
        if (!others.isEmpty() && !line->ListID.trimmed().isEmpty()) {
            others.sort();
            findings << LineFinding(ClaimRule::SharedSheet, *line,
                                    QStringLiteral("Лист %1 за %2 г. е и на ЕГН %3")
                                        .arg(line->ListID)
                                        .arg(line->Data.year())
                                        .arg(others.join(QStringLiteral(", "))));
        }
    }
}

QString ReferralFault(const Referral &referral)
{
    const bool noNumber = referral.number && referral.number->isEmpty();
    if (noNumber && !referral.date)
        return referral.kind + QStringLiteral(" без номер и дата");
    if (noNumber)
        return referral.kind + QStringLiteral(" без номер");
    if (!referral.date)
        return referral.kind + QStringLiteral(" без дата");
    return {};
}

void CheckReferrals(const ClaimsData &data, const QList<const ServiceLine *> &firsts, QList<ClaimFinding> &findings)
{
    QHash<QPair<QString, QString>, const ServiceLine *> sheets;
    for (const ServiceLine *line : firsts)
        if (!sheets.contains({line->EGN, line->ListID}))
            sheets.insert({line->EGN, line->ListID}, line);
    for (const Referral &referral : data.referrals) {
        const ServiceLine *sheet = sheets.value({referral.EGN, referral.ListID});
        const QString fault = sheet ? ReferralFault(referral) : QString();
        if (!fault.isEmpty())
            findings << ClaimFinding{ClaimRule::IncompleteReferral, referral.EGN, {}, referral.date.value_or(sheet->Data),
                                     referral.ListID, fault, 0};
    }
}

// The fund's minutes of the day by the activity report's table, on the line that passes 360.
void CheckDays(const ClaimsData &data, QList<ClaimFinding> &findings)
{
    QHash<QDate, int> totals;
    for (const ServiceLine &line : data.lines)
        totals[line.Data] += ActivityMinutes(line.KodHelp);
    QHash<QDate, int> running;
    for (const ServiceLine &line : data.lines) {
        const int before = running.value(line.Data);
        const int after = before + ActivityMinutes(line.KodHelp);
        running.insert(line.Data, after);
        if (before <= MinutesOfDay && after > MinutesOfDay)
            findings << LineFinding(ClaimRule::DayOverMinutes, line,
                                    QStringLiteral("%1: %2 минути по дейностите при %3 за деня")
                                        .arg(dates::toTyped(line.Data))
                                        .arg(totals.value(line.Data))
                                        .arg(MinutesOfDay));
    }
}

} // namespace

void CheckSheetRules(const ClaimsData &data, QList<ClaimFinding> &findings)
{
    const QList<const ServiceLine *> firsts = FirstLinesOfSheets(data);
    CheckSheets(data, firsts, findings);
    CheckReferrals(data, firsts, findings);
    CheckDays(data, findings);
}

} // namespace reports::claims
