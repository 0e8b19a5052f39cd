#include "app/repaintpacer.h"

#include <QElapsedTimer>
#include <QVBoxLayout>
#include <QWidget>
#include <QtTest>

namespace {
// Counts its paints and remembers the value each one showed.
class CountingWidget : public QWidget
{
public:
    int value = 0;
    int paintedValue = -1;
    int paints = 0;

protected:
    void paintEvent(QPaintEvent *) override
    {
        ++paints;
        paintedValue = value;
    }
};
} // namespace

class TestRepaintPacer : public QObject
{
    Q_OBJECT

private slots:
    // Changes faster than frames are painted together, at most once a frame, and the last
    // of them always reaches the screen.
    void paintsAtMostOncePerFrameAndLosesNoChange()
    {
        QWidget window;
        auto *child = new CountingWidget;
        auto *layout = new QVBoxLayout(&window);
        layout->addWidget(child);
        new RepaintPacer(&window);
        window.resize(200, 100);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QTest::qWait(100);

        const int intervalMs = RepaintPacer::frameIntervalMs();
        child->paints = 0;
        QElapsedTimer burst;
        burst.start();
        while (burst.elapsed() < 20 * intervalMs) {
            ++child->value;
            child->update();
            QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
            QTest::qWait(1);
        }
        const qint64 elapsedMs = burst.elapsed();
        QVERIFY(child->paints >= 2);
        QVERIFY2(child->paints <= elapsedMs / intervalMs + 2,
                 qPrintable(QString::number(child->paints)));
        QTRY_COMPARE(child->paintedValue, child->value);
    }
};

QTEST_MAIN(TestRepaintPacer)
#include "tst_repaintpacer.moc"
