// Cost of handing one polled control table to every bound field: the scheduler's own reply
// handler, which assembles each item little-endian, narrows it, finds its widget, delivers,
// and passes the error byte to the status boxes. No register view is open, so its updates
// are not part of the figure.
#include "device/uiregisterhelper.h"
#include "link/uischeduler.h"
#include "widgets/iunitdatafield.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QObject>
#include <cstdio>
#include <memory>
#include <vector>

namespace {

class CountingField : public QObject, public IUnitDataField
{
public:
    QString objectName() const override { return QObject::objectName(); }
    void setLocked(bool) override {}
    int32_t fieldId() const override { return 0; }
    void setValue(int raw) override { sum += raw; }
    int value() override { return int(sum); }
    void setObjectName(const QString &name) override { QObject::setObjectName(name); }
    void applyDependency() override {}

    int64_t sum = 0;
};

const char *const boundNames[] = {
    "modelNumberLineEdit",
    "firmwareVersionLineEdit",
    "idSpinBox",
    "baudRateComboBox",
    "operatingModeComboBox",
    "clockwiseLimitDoubleSpinBox",
    "targetPositionDoubleSpinBox",
    "actualPositionLineEdit",
    "actualAngularVelocityLineEdit",
    "actualTorqueLineEdit",
    "actualVoltageLineEdit",
    "actualTemperatureLineEdit",
    "isMovingCheckBox",
    "hallStatusCheckBox",
    "inputVoltageStatusCheckBox",
    "targetTorqueDoubleSpinBox",
};

} // namespace

int main()
{
    const std::shared_ptr<UiRegisterHelper> helper = UiRegisterHelper::instance();
    std::vector<std::unique_ptr<CountingField>> fields;
    for (const char *name : boundNames) {
        fields.push_back(std::make_unique<CountingField>());
        fields.back()->setObjectName(name);
        helper->registerWidget(name, fields.back().get());
    }
    // Only its reply handler runs: without a serial helper it sends nothing.
    UiScheduler scheduler(1, nullptr);
    QByteArray reply(118 + 11, '\0');
    for (int i = 0; i < reply.size(); ++i)
        reply[i] = char(i * 37);

    constexpr int polls = 200000;
    QElapsedTimer timer;
    timer.start();
    for (int poll = 0; poll < polls; ++poll)
        scheduler.groupCallback(reply);
    const double elapsedUs = double(timer.nsecsElapsed()) / 1000.0;

    int64_t checksum = 0;
    for (const auto &field : fields)
        checksum += field->sum;
    std::printf("poll map: %zu items, %zu bound fields\n", helper->pollMap().size(), fields.size());
    std::printf("UiScheduler::groupCallback, no register view: one reply in %.3f us "
                "(%d replies, checksum %lld)\n",
                elapsedUs / polls, polls, static_cast<long long>(checksum));
    return 0;
}
