#pragma once

#include "patients/EgnRules.h"
#include "store/Csv.h"
#include "store/Result.h"

#include <QDate>
#include <QList>
#include <QString>

#include <optional>

// What the fund pays a patient in one calendar year: one examination and a number of activities,
// by the age group on the day of the service. The numbers change with each national framework
// contract, so they are data, not code: a table shipped with the program (AnnualPackage.csv)
// that a practice may correct by putting its own AnnualPackage.csv into the data folder.
namespace reports {

enum class AgeGroup { UpTo18, Over18 };

// "до 18" or "над 18", as the table and the messages name the groups.
QString AgeGroupText(AgeGroup group);

struct AnnualPackage final
{
    int fromYear = 0;
    int toYear = 0;
    AgeGroup group = AgeGroup::UpTo18;
    int examinations = 0;
    int activities = 0;
    int endodonticPermanent = -1; // at most this many root treatments of permanent teeth; -1: no own limit
    QString contract;             // the contract the row comes from
};

// The age group on a day, or nullopt when the number names no birth date: up to 18 includes
// the eighteenth birthday itself.
std::optional<AgeGroup> AgeGroupOn(const QString &egn, const QDate &day, EgnRule rule);

// Whether a line's tooth (Help.KodZab, an FDI number) is a permanent one; a tooth that names no
// position is not judged.
bool OnPermanentTooth(const QString &kodZab);

// The activities a package counts: the fillings (301-304 and their letters) and the extractions
// 508 and 509, and up to eighteen the root treatments 332 and 333 as well.
bool IsPackageActivity(const QString &code, AgeGroup group);
// The root treatments, 332 and 333.
bool IsEndodonticCode(const QString &code);

class AnnualPackageTable final
{
public:
    static inline const QString FileName = QStringLiteral("AnnualPackage.csv");

    // The data folder's own AnnualPackage.csv when there is one, else the table shipped with the
    // program. A file that is not a good table is refused naming the file and the line: a wrong
    // package would make every finding wrong.
    static Result<AnnualPackageTable> load(const QString &dataFolder);
    // The table shipped with the program.
    static Result<AnnualPackageTable> shipped();
    // The table of the given CSV text; `source` names it in messages.
    static Result<AnnualPackageTable> parse(const QString &csvText, const QString &source);

    // The row for the year and group, or nullptr: a year without a row is unknown, never guessed.
    const AnnualPackage *find(int year, AgeGroup group) const;
    const QList<AnnualPackage> &rows() const { return m_rows; }
    const QString &source() const { return m_source; }

private:
    static Result<AnnualPackageTable> fromCsv(const store::CsvTable &csv, const QString &source);

    QList<AnnualPackage> m_rows;
    QString m_source;
};

} // namespace reports
