#include "views/editview.h"

EditView::EditView(QWidget *parent)
    : QWidget(parent)
{}
