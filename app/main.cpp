#include "app/mainwindow.h"
#include "simulator/virtualbusportprovider.h"
#include "translations/translationinstaller.h"

#include <QApplication>
#include <QLocale>

namespace {

QtMessageHandler defaultHandler = nullptr;

// Qt looks for a runtime folder while it starts and warns where none is set, as in a root
// shell; the program itself needs none, so the warning would only alarm.
void quietAboutRuntimeFolder(QtMsgType type, const QMessageLogContext &context,
                             const QString &message)
{
    if (type == QtWarningMsg &&
        message.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR not set")))
        return;
    defaultHandler(type, context, message);
}

} // namespace

int main(int argc, char *argv[])
{
    // The images live in a static library, whose resources are not registered on their own.
    Q_INIT_RESOURCE(resources);
    defaultHandler = qInstallMessageHandler(quietAboutRuntimeFolder);

    QApplication application(argc, argv);
    TranslationInstaller::install(QLocale::system());
    // Without hardware, the simulated bus is what the user connects to.
    VirtualBusPortProvider::installProcessBus();
    MainWindow window;
    window.show();
    return application.exec();
}
