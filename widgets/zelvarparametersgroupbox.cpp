#include "widgets/zelvarparametersgroupbox.h"

#include "widgets/izelvarfield.h"
#include "widgets/zelvarstatuscheckbox.h"

ZelvarParametersGroupBox::ZelvarParametersGroupBox(QWidget *parent)
    : QGroupBox(parent)
{}

namespace {

// Fields follow the link, and so do the status displays: they have no field, but show
// red only while a servo is connected, so without this an alert would never be seen.
// The group's tool buttons are connected to the actions on their own.
template<typename Operation>
void forEachConnectedField(QObject *group, Operation operation)
{
    for (QObject *child : group->children()) {
        const bool followsLink =
            dynamic_cast<IZelvarField *>(child) || qobject_cast<ZelvarStatusCheckBox *>(child);
        auto *info = dynamic_cast<IConnectInfo *>(child);
        if (followsLink && info)
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
