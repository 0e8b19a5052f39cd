#pragma once

#include <QWidget>

// The "Unit fields" tab: the servo's values in the user's units.
class EditView : public QWidget
{
    Q_OBJECT

public:
    explicit EditView(QWidget *parent = nullptr);
};
