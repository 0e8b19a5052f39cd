#include "widgets/zelvarparametersgroupbox.h"

#include "widgets/izelvarfield.h"

ZelvarParametersGroupBox::ZelvarParametersGroupBox(QWidget *parent)
    : QGroupBox(parent)
{
}

namespace {

template<typename Operation>
void forEachConnectedField(QObject *group, Operation operation)
{
    for (QObject *child : group->children()) {
        auto *field = dynamic_cast<IZelvarField *>(child);
        auto *info = dynamic_cast<IConnectInfo *>(child);
        if (field && info)
            operation(info);
    }
}

} // namespace

void ZelvarParametersGroupBox::connected()
{
    forEachConnectedField(this, [](IConnectInfo *info) { info->connected(); });
    repaint();
}

void ZelvarParametersGroupBox::disconnected()
{
    forEachConnectedField(this, [](IConnectInfo *info) { info->disconnected(); });
    repaint();
}
