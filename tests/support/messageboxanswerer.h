#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QStringList>
#include <QTimer>

// Answers every message box at once, as a user would, and keeps "title: text" of each.
// A question (its default button Cancel) is answered with its destructive button, or with
// Cancel while confirm is false.
class MessageBoxAnswerer
{
public:
    MessageBoxAnswerer()
    {
        QObject::connect(&timer, &QTimer::timeout, [this] { answer(); });
        timer.start(5);
    }

    QStringList boxes;
    QStringList questions;
    bool confirm = true;

private:
    void answer()
    {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return;
        QAbstractButton *cancel = box->button(QMessageBox::Cancel);
        if (!cancel || box->defaultButton() != cancel) {
            boxes << box->windowTitle() + ": " + box->text();
            box->done(QMessageBox::Ok);
            return;
        }
        questions << box->windowTitle() + ": " + box->text();
        QAbstractButton *answer = cancel;
        for (QAbstractButton *button : box->buttons()) {
            if (confirm && box->buttonRole(button) == QMessageBox::DestructiveRole)
                answer = button;
        }
        answer->click();
    }

    QTimer timer;
};
