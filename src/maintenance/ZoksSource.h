#pragma once

#include "maintenance/JetSource.h"
#include "store/Result.h"

#include <QHash>

// The other package's database as the import reads it: the five tables, each checked for the
// fields the import takes, and the four look-ups indexed by their keys.
namespace zoks {

// One table with its fields found by name once, so that a walk over many rows does not
// look names up again.
class SourceTable final
{
public:
    SourceTable() = default;
    SourceTable(jet::Table table, const QStringList &fields);

    int rowCount() const { return int(m_table.rows.size()); }
    QVariant value(int row, int field) const { return m_table.rows.at(row).at(m_places.at(field)); }

private:
    jet::Table m_table;
    QList<int> m_places;
};

// A table looked up by one key field, as the package's queries do (WHERE key = '...'):
// the first row of a key is the one found.
class Lookup final
{
public:
    Lookup() = default;
    Lookup(SourceTable table, int keyField);

    // The row of that key, or -1.
    int find(const QString &key) const;
    const SourceTable &table() const { return m_table; }

private:
    SourceTable m_table;
    QHash<QString, int> m_rows;
};

// The fields of each table, in the order the import refers to them by these constants.
namespace patients { enum { IDNUMBER, NAME1, NAME2, NAME3, POL, BIRTHDATE, DATEREG, HIMNUMBER, RECBOOK }; }
namespace address { enum { IDNUMBER, POSTCODE, STREET1, STREET2, NOMSTRT, NOMBLOK, VHOD, ETAG, APART, TOWNVILLAG, TELEFON, FAX }; }
namespace eknm { enum { TOWNVILLAG, DISTRICTCO, HRCODE, KIND, TOWNVILLA2, MUNICIPALI }; }
namespace names { enum { KEY, NAME }; }

struct Source final
{
    SourceTable patients;
    Lookup address;     // by IDNUMBER
    Lookup settlements; // eknm, by TOWNVILLAG
    Lookup municipalities; // s_code, by CODE
    Lookup districts;      // st_code, by TYPE
};

// Reads the file, a Jet .mdb or an SQLite file. A missing file, a damaged one, a missing
// table or field is a message naming the file and what is missing.
Result<Source> readSource(const QString &path);

} // namespace zoks
