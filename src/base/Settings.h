#pragma once

#include <QVariant>

#include <memory>

class QSettings;

// The program's per-user settings, every key with its default in one table. The store is an
// INI file of the user's configuration folder; a damaged file reads as the defaults and is
// written anew, never a reason to stop.
class Settings final
{
public:
    enum class Key {
        MainLeft,
        MainTop,
        MainWidth,
        MainHeight,
        KartonOffsetX, // mm the ambulatory sheet is moved right on the paper
        KartonOffsetY, // mm it is moved down
        SpecOffsetX,   // the same for the claim form (rptSpec)
        SpecOffsetY,
        XmlReportFolder, // where the last XML report was saved; the documents folder at first
    };

    Settings();
    ~Settings();
    Settings(const Settings &) = delete;
    Settings &operator=(const Settings &) = delete;

    QVariant value(Key key) const;
    void setValue(Key key, const QVariant &value);
    // Writes what was set to the file now; false when the file could not be written.
    [[nodiscard]] bool sync();

    static QString path(Key key); // "Settings/MainLeft"
    static QVariant defaultValue(Key key);
    // Where the file lies; used to tell the user which file failed.
    QString fileName() const;

private:
    std::unique_ptr<QSettings> m_store;
};
