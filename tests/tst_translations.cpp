#include "app/mainwindow.h"
#include "plot/plotdock.h"
#include "search/searchdialog.h"
#include "settings/settingsdialog.h"
#include "translations/translationinstaller.h"

#include <QtTest>
#include <QtWidgets>

namespace {

QStringList placeholders(const QString &text)
{
    QStringList found;
    auto matches = QRegularExpression(QStringLiteral("%[\\dn]")).globalMatch(text);
    while (matches.hasNext())
        found << matches.next().captured();
    found.sort();
    return found;
}

int accelerators(QString text)
{
    return text.remove(QStringLiteral("&&")).count('&');
}

} // namespace

class TestTranslations : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Q_INIT_RESOURCE(resources); }

    void cleanupTestCase() { TranslationInstaller::install(QLocale::c()); }

    void showsTheWindowsInTheUsersLanguage_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<bool>("translated");
        QTest::addColumn<QStringList>("texts");
        const QStringList german{
            "Zelvar Servo Manager", "Einstellungen", "Gerätesuche", "Felder in Einheiten",
            "Position (Radiant):",  "Getrennt",      "Diagramm",    "Aktivität"};
        const QStringList english{
            "Zelvar Servo Manager", "Settings",     "Device search", "Unit fields",
            "Position (radians):",  "Disconnected", "Plot",          "Activity"};
        QTest::newRow("German") << "de_DE" << true << german;
        QTest::newRow("Austrian German") << "de_AT" << true << german;
        QTest::newRow("French, not translated") << "fr_FR" << false << english;
        QTest::newRow("English") << "en_GB" << false << english;
    }

    void showsTheWindowsInTheUsersLanguage()
    {
        QFETCH(QString, locale);
        QFETCH(bool, translated);
        QFETCH(QStringList, texts);
        QCOMPARE(TranslationInstaller::install(QLocale(locale)), translated);
        MainWindow window;
        const auto *tabs = window.findChild<QTabWidget *>(QStringLiteral("tabWidget"));
        QCOMPARE(
            QStringList({window.windowTitle(), SettingsDialog::instance()->windowTitle(),
                         SearchDialog::instance()->windowTitle(), tabs->tabText(0),
                         window.findChild<QLabel *>("positionLabel")->text(),
                         window.statusBar()->currentMessage(), window.plotDock()->windowTitle(),
                         window.findChild<QDockWidget *>("activityDock")->windowTitle()}),
            texts);
    }

    // A translation that loses a placeholder shows "%1" or drops the port's name; one
    // that loses its & leaves a menu entry without its key.
    void everyTextIsTranslatedWithItsPlaceholdersAndKeys()
    {
        QFile file(QStringLiteral(ZELVAR_SOURCE_DIR "/translations/zelvar-servo-manager_de.ts"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QXmlStreamReader xml(&file);
        QString source;
        bool numerus = false;
        QStringList faults;
        int messages = 0;
        while (!xml.atEnd()) {
            if (xml.readNext() != QXmlStreamReader::StartElement)
                continue;
            if (xml.name() == QLatin1String("message")) {
                numerus = xml.attributes().value("numerus") == QLatin1String("yes");
            } else if (xml.name() == QLatin1String("source")) {
                source = xml.readElementText();
            } else if (xml.name() == QLatin1String("translation")) {
                const bool unfinished = !xml.attributes().value("type").isEmpty();
                // A counted text holds one translation per plural form; each needs all of it.
                QStringList forms;
                if (numerus) {
                    while (xml.readNextStartElement())
                        forms << xml.readElementText();
                } else {
                    forms << xml.readElementText();
                }
                ++messages;
                if (unfinished || forms.isEmpty())
                    faults << "not translated: " + source;
                for (const QString &translation : qAsConst(forms)) {
                    if (translation.isEmpty())
                        faults << "not translated: " + source;
                    else if (placeholders(translation) != placeholders(source))
                        faults << "placeholders differ: " + source;
                    else if (accelerators(translation) != accelerators(source))
                        faults << "keyboard accelerator differs: " + source;
                }
            }
        }
        QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
        QVERIFY(messages > 200);
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join('\n')));
    }
};

QTEST_MAIN(TestTranslations)
#include "tst_translations.moc"
