#include "base/Settings.h"

#include <QCoreApplication>
#include <QSettings>

namespace {

struct KeyDef final
{
    Settings::Key key;
    const char *path;
    QVariant defaultValue;
};

// The main window's geometry is written at an orderly close and never read back: the window
// always starts at its design position, which the defaults are.
const KeyDef keys[] = {
    {Settings::Key::MainLeft, "Settings/MainLeft", 40},
    {Settings::Key::MainTop, "Settings/MainTop", 30},
    {Settings::Key::MainWidth, "Settings/MainWidth", 1024},
    {Settings::Key::MainHeight, "Settings/MainHeight", 700},
    {Settings::Key::KartonOffsetX, "PrintOffsets/rprKartonX", 0.0},
    {Settings::Key::KartonOffsetY, "PrintOffsets/rprKartonY", 0.0},
    {Settings::Key::SpecOffsetX, "PrintOffsets/rptSpecX", 0.0},
    {Settings::Key::SpecOffsetY, "PrintOffsets/rptSpecY", 0.0},
    {Settings::Key::XmlReportFolder, "Reports/XmlFolder", QString()},
};

const KeyDef &definition(Settings::Key key)
{
    for (const KeyDef &def : keys)
        if (def.key == key)
            return def;
    Q_UNREACHABLE();
}

} // namespace

Settings::Settings()
    : m_store(std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope,
                                          QCoreApplication::organizationName(), QCoreApplication::applicationName()))
{
}

Settings::~Settings() = default;

QVariant Settings::value(Key key) const
{
    const KeyDef &def = definition(key);
    // A damaged file has nothing trustworthy in it.
    if (m_store->status() == QSettings::FormatError)
        return def.defaultValue;
    return m_store->value(QString::fromLatin1(def.path), def.defaultValue);
}

void Settings::setValue(Key key, const QVariant &value) { m_store->setValue(path(key), value); }

bool Settings::sync()
{
    m_store->sync();
    // A format error only tells that the file read at the start was damaged; the sync has
    // written it anew. Only a file that could not be written is a failure.
    return m_store->status() != QSettings::AccessError;
}

QString Settings::path(Key key) { return QString::fromLatin1(definition(key).path); }

QVariant Settings::defaultValue(Key key) { return definition(key).defaultValue; }

QString Settings::fileName() const { return m_store->fileName(); }
