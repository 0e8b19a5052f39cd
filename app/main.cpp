#include "app/mainwindow.h"
#include "simulator/virtualbusportprovider.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    // The images live in a static library, whose resources are not registered on their own.
    Q_INIT_RESOURCE(resources);

    QApplication application(argc, argv);
    // Without hardware, the simulated bus is what the user connects to.
    VirtualBusPortProvider::installProcessBus();
    MainWindow window;
    window.show();
    return application.exec();
}
