#include "reports/Period.h"

#include "store/Dates.h"

namespace reports {
namespace {

const QString FormatHint = QStringLiteral("Формата на датата е: ДД.ММ.ГГГГ");

// Characters 4 and 5 read as a number the way the old dialog read them: leading digits count,
// anything else makes 0.
int monthDigits(const QString &typed)
{
    const QString part = typed.mid(3, 2);
    int value = 0;
    for (const QChar c : part) {
        if (!c.isDigit())
            break;
        value = value * 10 + c.digitValue();
    }
    return value;
}

QString typedForm(const QString &trimmed)
{
    return trimmed.left(2) + u'.' + trimmed.mid(3, 2) + u'.' + trimmed.right(4);
}

PeriodEntry refused(PeriodCheck check, const QString &message) { return {check, message, {}}; }

QString noDayMessage(const QString &typed)
{
    return QStringLiteral("Датата \"%1\" не е ден от календара!\r%2").arg(typed, FormatHint);
}

} // namespace

QString Period::caption() const
{
    if (PeriodFromText == PeriodToText)
        return PeriodFromText;
    return QStringLiteral("от ") + PeriodFromText + QStringLiteral(" до ") + PeriodToText;
}

PeriodEntry CheckPeriod(const QString &first, const QString &last)
{
    if (first.isEmpty() || last.isEmpty())
        return refused(PeriodCheck::Incomplete, {});
    if (first.size() != 10 || last.size() != 10)
        return refused(PeriodCheck::BadLength, QStringLiteral("Грешка в изписването на датата!\r") + FormatHint);
    if (monthDigits(first) > 12 || monthDigits(last) > 12)
        return refused(PeriodCheck::BadMonth, QStringLiteral("Грешка в изписването на месеца!\r") + FormatHint);

    Period period;
    const QString a = first.trimmed();
    const QString b = last.trimmed();
    period.PeriodFromQuery = dates::sliceTypedToQueryForm(a);
    period.PeriodToQuery = dates::sliceTypedToQueryForm(b);
    period.PeriodFromText = typedForm(a);
    period.PeriodToText = typedForm(b);
    // The slices above take a trimmed text for ten characters; a shorter one, or one whose
    // parts name no day, would make a period nobody asked for.
    const auto from = a.size() == 10 ? dates::fromQueryForm(period.PeriodFromQuery) : std::nullopt;
    if (!from)
        return refused(PeriodCheck::NoCalendarDay, noDayMessage(first));
    const auto to = b.size() == 10 ? dates::fromQueryForm(period.PeriodToQuery) : std::nullopt;
    if (!to)
        return refused(PeriodCheck::NoCalendarDay, noDayMessage(last));
    period.from = *from;
    period.to = *to;
    return {PeriodCheck::Accepted, {}, period};
}

QString DoctorCaption(const QString &medicName) { return QStringLiteral("от д-р ") + medicName; }

} // namespace reports
