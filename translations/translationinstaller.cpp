#include "translations/translationinstaller.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

QTranslator *TranslationInstaller::program = nullptr;
QTranslator *TranslationInstaller::toolkit = nullptr;

// A static library's resources are not registered on their own; this must stand outside
// any namespace.
static void registerResources()
{
    Q_INIT_RESOURCE(translations);
}

namespace {

QTranslator *replace(QTranslator *old, const QLocale &locale, const QString &name,
                     const QString &folder)
{
    if (old) {
        QCoreApplication::removeTranslator(old);
        delete old;
    }
    auto *translator = new QTranslator(QCoreApplication::instance());
    if (!translator->load(locale, name, QStringLiteral("_"), folder)) {
        delete translator;
        return nullptr;
    }
    QCoreApplication::installTranslator(translator);
    return translator;
}

} // namespace

bool TranslationInstaller::install(const QLocale &locale)
{
    registerResources();
    program = replace(program, locale, QStringLiteral("zelvar-servo-manager"),
                      QStringLiteral(":/translations"));
    toolkit = replace(toolkit, locale, QStringLiteral("qtbase"),
                      QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    return program != nullptr;
}
