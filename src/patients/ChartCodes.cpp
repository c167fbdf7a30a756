#include "patients/ChartCodes.h"

namespace chartcodes {

const QList<EntryCode> &entryCodes()
{
    // "18" gives "OP" although "1" alone gives "C", and the legend keeps its spelling.
    static const QList<EntryCode> codes{
        {QStringLiteral("1"), QStringLiteral("C"), QStringLiteral("кариес")},
        {QStringLiteral("8"), QStringLiteral("P"), QStringLiteral("пулпит")},
        {QStringLiteral("9"), QStringLiteral("G"), QStringLiteral("гангрена")},
        {QStringLiteral("4"), QStringLiteral("R"), QStringLiteral("корен")},
        {QStringLiteral("2"), QStringLiteral("O"), QStringLiteral("обтулация")},
        {QStringLiteral("3"), QStringLiteral("E"), QStringLiteral("липсв.зъб")},
        {QStringLiteral("5"), QStringLiteral("K"), QStringLiteral("коронка")},
        {QStringLiteral("6"), QStringLiteral("X"), QStringLiteral("изк.зъб")},
        {QStringLiteral("0"), QStringLiteral("Pa"), QStringLiteral("парадонтоза")},
        {QStringLiteral("7"), QStringLiteral("F"), QStringLiteral("фрактура")},
        {QStringLiteral("01"), QStringLiteral("I"), QStringLiteral("I ст.подвижост")},
        {QStringLiteral("02"), QStringLiteral("II"), QStringLiteral("II ст.подвижност")},
        {QStringLiteral("03"), QStringLiteral("III"), QStringLiteral("III ст.подвижност")},
        {QStringLiteral("12"), QStringLiteral("OC"), {}},
        {QStringLiteral("44"), QStringLiteral("Rr"), {}},
        {QStringLiteral("18"), QStringLiteral("OP"), {}},
        {QStringLiteral("00"), QStringLiteral("*"), {}},
        {QStringLiteral("*"), QStringLiteral("*"), {}},
    };
    return codes;
}

QString translate(const QString &fieldText)
{
    for (const EntryCode &code : entryCodes())
        if (code.typed == fieldText)
            return code.stored;
    return fieldText;
}

} // namespace chartcodes
