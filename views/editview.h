#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class EditView;
}
class UiGroupHelper;

// The "Unit fields" tab: one servo's values in physical units and its two parameter
// groups. It holds no servo logic; the shared helpers bind its controls by object name.
class EditView : public QWidget
{
    Q_OBJECT

public:
    explicit EditView(QWidget *parent = nullptr);
    ~EditView() override;

private:
    void giveToolButtonsTheirRoles();
    static void registerUnitDataFields(QObject *object);

    std::unique_ptr<Ui::EditView> ui;
    // Keeps the group helper, which reaches into this form, alive as long as the view.
    std::shared_ptr<UiGroupHelper> groupHelper;
};
