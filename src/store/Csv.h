#pragma once

#include "store/Result.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

class QIODevice;

namespace store {

// The position of a header name, case-insensitive and blanks around it not counting; -1 if absent.
int columnOf(const QStringList &header, const QString &name);

// A table read from a CSV file: the header names and the rows, each as long as the header.
struct CsvTable final
{
    QStringList header;
    QList<QStringList> rows;
    QList<int> lineNumbers; // the line of the file each row began on, for messages

    int column(const QString &name) const; // by header name, case-insensitive; -1 if absent
};

// Reads a CSV file record by record, so that a file of any size takes only the memory of one
// record. Files come from outside and are read strictly: the text must be UTF-8 (a byte order
// mark is allowed), holds no NUL byte, and every record has as many fields as the header.
// Fields are separated by commas or, when the header holds no comma but a semicolon, by
// semicolons; a field that begins with a quote may hold separators, line breaks and doubled
// quotes, which stand for one quote. Lines may end in LF, CRLF or CR. Blank lines are passed over.
class CsvReader final
{
public:
    // Reads the header at once; check error() before reading rows.
    CsvReader(QIODevice &device, QString sourceName);

    const QStringList &header() const { return m_header; }
    int column(const QString &name) const; // by header name, case-insensitive; -1 if absent

    // The next row into `fields` and the line it began on into `line`; false at the end of the
    // file and on a fault, which error() then names with the file and the line.
    bool next(QStringList &fields, int &line);
    // Empty while the file is good.
    const QString &error() const { return m_error; }

private:
    enum class Field { Ended, RecordEnded, FileEnded, Failed };

    bool readRecord(QList<QByteArray> &fields);
    Field readField(QByteArray &bytes);
    Field readQuoted(QByteArray &bytes);
    bool append(QByteArray &bytes, char c);
    bool fill();
    int nextByte();
    int peekByte();
    void endLine(int byte);
    bool fail(int line, const QString &what);
    bool decode(const QList<QByteArray> &raw, QStringList &fields);
    void detectSeparator();

    QIODevice &m_device;
    QString m_source;
    QByteArray m_buffer;
    qsizetype m_pos = 0;
    int m_line = 1;
    int m_recordLine = 1;
    qsizetype m_recordSize = 0;
    char m_separator = ',';
    QStringList m_header;
    QString m_error;
};

// The message of a fault in a file that came from outside: "Файл <source>, ред <line>: <what>".
QString csvLineMessage(const QString &source, int line, const QString &what);

// Reads the whole text with a header line, by the rules of CsvReader; a fault names
// `sourceName` and the line.
Result<CsvTable> parseCsv(const QString &content, const QString &sourceName);
Result<CsvTable> readCsvFile(const QString &path);

} // namespace store
