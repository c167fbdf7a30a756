#include "base/QtTranslations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

bool installQtTranslations(QCoreApplication &app)
{
    auto *translator = new QTranslator(&app);
    const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    if (!translator->load(QLocale(QLocale::Bulgarian, QLocale::Bulgaria), QStringLiteral("qtbase"),
                          QStringLiteral("_"), folder)) {
        delete translator;
        return false;
    }
    return QCoreApplication::installTranslator(translator);
}
