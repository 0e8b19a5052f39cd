#include "simulator/bridge/signalwatcher.h"

#include <QSocketNotifier>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

int wakeUp[2] = {-1, -1};

} // namespace

SignalWatcher::SignalWatcher(QObject *parent)
    : QObject(parent)
{
    if (pipe2(wakeUp, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    notifier = new QSocketNotifier(wakeUp[0], QSocketNotifier::Read, this);
    connect(notifier, SIGNAL(activated(int)), this, SLOT(onSignal()));
    struct sigaction action = {};
    action.sa_handler = &SignalWatcher::handle;
    sigemptyset(&action.sa_mask);
    for (int number : {SIGINT, SIGTERM, SIGHUP})
        sigaction(number, &action, nullptr);
}

SignalWatcher::~SignalWatcher()
{
    for (int number : {SIGINT, SIGTERM, SIGHUP})
        signal(number, SIG_DFL);
}

void SignalWatcher::handle(int)
{
    const char byte = 1;
    [[maybe_unused]] const auto written = write(wakeUp[1], &byte, 1);
}

void SignalWatcher::onSignal()
{
    char byte;
    while (read(wakeUp[0], &byte, 1) > 0) {
    }
    emit terminationRequested();
}
