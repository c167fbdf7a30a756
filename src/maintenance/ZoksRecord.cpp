#include "maintenance/ZoksRecord.h"

#include "maintenance/JetSource.h"

namespace zoks {
namespace {

QString asItStands(const QVariant &value)
{
    return value.isNull() ? QString() : value.toString();
}

} // namespace

QString ifNotBlank(const QVariant &value)
{
    return jet::trimmedText(value).isEmpty() ? QString() : asItStands(value);
}

QString joinedName(const QVariant &name1, const QVariant &name2, const QVariant &name3)
{
    QString name = asItStands(name1);
    for (const QVariant &part : {name2, name3})
        if (const QString trimmed = jet::trimmedText(part); !trimmed.isEmpty())
            name += u' ' + trimmed;
    return name;
}

QString sexOf(const QVariant &pol)
{
    bool number = false;
    const qlonglong value = pol.toLongLong(&number);
    return !pol.isNull() && number && value == 0 ? QStringLiteral("М") : QStringLiteral("Ж");
}

QString joinedAddress(const AddressFields &fields)
{
    const std::pair<const QVariant *, const char16_t *> marked[] = {
        {&fields.street2, u" "},     {&fields.number, u" №"},  {&fields.block, u" бл."},
        {&fields.entrance, u", вх."}, {&fields.floor, u", ет."}, {&fields.flat, u" ,ап."},
    };
    QString address = asItStands(fields.street1);
    for (const auto &[value, mark] : marked)
        if (const QString trimmed = jet::trimmedText(*value); !trimmed.isEmpty())
            address += QString::fromUtf16(mark) + trimmed;
    return address;
}

QString settlementName(const QVariant &kind, const QVariant &town)
{
    return ifNotBlank(kind) + ifNotBlank(town);
}

} // namespace zoks
