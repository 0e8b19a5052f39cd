#include "views/registerview.h"

RegisterView::RegisterView(QWidget *parent)
    : QWidget(parent)
{}
