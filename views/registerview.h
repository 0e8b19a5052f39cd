#pragma once

#include <QWidget>

// The "Register fields" tab: the servo's raw register table.
class RegisterView : public QWidget
{
    Q_OBJECT

public:
    explicit RegisterView(QWidget *parent = nullptr);
};
