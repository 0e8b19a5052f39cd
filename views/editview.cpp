#include "views/editview.h"

#include "device/fieldhelper.h"
#include "device/statushelper.h"
#include "device/uiregisterhelper.h"
#include "ui_editview.h"
#include "widgets/iunitdatafield.h"
#include "widgets/uigrouphelper.h"

EditView::EditView(QWidget *parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::EditView>())
{
    ui->setupUi(this);
    giveToolButtonsTheirRoles();

    // Each helper is made once per process; a second view shares the first one's.
    if (!UiGroupHelper::instance())
        UiGroupHelper::create(this);
    groupHelper = UiGroupHelper::instance();
    StatusHelper::create(ui.get());
    if (!FieldHelper::instance())
        FieldHelper::create(children());

    registerUnitDataFields(this);
}

EditView::~EditView() = default;

void EditView::giveToolButtonsTheirRoles()
{
    ui->nvParamsCancelToolButton->role = ZelvarGroupToolButton::Cancel;
    ui->vParamsCancelToolButton->role = ZelvarGroupToolButton::Cancel;
    ui->nvParamsEditSaveToolButton->role = ZelvarGroupToolButton::EditSave;
    ui->vParamsEditSaveToolButton->role = ZelvarGroupToolButton::EditSave;
}

// Depth first, in child order; a field's own children (spin box editors and the like)
// are no fields of their own.
void EditView::registerUnitDataFields(QObject *object)
{
    for (QObject *child : object->children()) {
        if (auto *field = dynamic_cast<IUnitDataField *>(child))
            UiRegisterHelper::instance()->registerWidget(field->objectName(), field);
        else
            registerUnitDataFields(child);
    }
}
