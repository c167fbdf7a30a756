#pragma once

#include <QString>
#include <QVariant>

// How one patient of the ZOKS package becomes a card of this program: the name, the sex, the
// one-line address and the settlement's name, each built as the other package's fields give it.
namespace zoks {

// NAME1 as it stands, then the trimmed NAME2 and NAME3, each behind one blank if not empty.
QString joinedName(const QVariant &name1, const QVariant &name2, const QVariant &name3);
// POL 0 is a man; any other value, Null included, a woman.
QString sexOf(const QVariant &pol);
// The value as it stands when its trimmed text is not empty, else an empty text.
QString ifNotBlank(const QVariant &value);

struct AddressFields final
{
    QVariant street1, street2, number, block, entrance, floor, flat;
};
// STREET1 as it stands, then each further part that is not blank behind its mark. The flat's
// mark has its comma after the blank (" ,ап."), as the practices' cards have always shown it.
QString joinedAddress(const AddressFields &fields);

// KIND and TOWNVILLA2 run together, each only if not blank: "гр." and "София" give "гр.София".
QString settlementName(const QVariant &kind, const QVariant &town);

} // namespace zoks
