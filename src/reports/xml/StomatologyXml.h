#pragma once

#include "reports/Period.h"
#include "store/Result.h"

#include <QByteArray>
#include <QDate>
#include <QSqlDatabase>
#include <QString>

// The stomatology report the practice hands to the fund for a period: one XML document for one
// doctor, a dentalCareService element per patient and ambulatory sheet, in the fund's import format.
namespace reports {

struct XmlReport final
{
    QByteArray document; // UTF-8 with its byte order mark, CR LF line ends
    QString exportUin;   // ExportUin after the build: the name the file is suggested under
    int sheets = 0;
};

// Builds the document of the doctor's lines of the period; `today` is its reportingDate. Shows
// ProgDialog while it writes and "Завърших обработката на данните!" at the end, and sets the
// run-wide ExportUin from the medical unit. A line without a price or with one the fund's
// format cannot hold, or a line whose patient has no card, makes no document: the message names
// the patient and the sheet. An empty period gives the whole document with no sheet in it.
Result<XmlReport> BuildStomatologyXml(const QSqlDatabase &clinic, const Period &period, const QString &medicCode,
                                      const QDate &today);

// The name the save dialog offers: ExportUin "-" MM YYYY of the first date ".xml".
QString SuggestedXmlFileName(const QString &exportUin, const Period &period);

// Writes the document to `target` through a temporary file in the same folder, renamed at the
// end: a target that cannot be written is a message naming it, and a file of that name that was
// there stays as it was.
Outcome WriteXmlReport(const QByteArray &document, const QString &target);

} // namespace reports
