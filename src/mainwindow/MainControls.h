// Menu items, toolbar buttons and controls of the panes by their names. Commands and controllers switch and
// read them here.
#pragma once

#include "app/Controls.h"

class QWidget;

namespace quavernet {

class MainMenu;
class MainToolbar;

class MainControls : public Controls {
public:
    MainControls(MainMenu& menu, MainToolbar& toolbar, QWidget& panes)
        : m_menu(menu), m_toolbar(toolbar), m_panes(panes) {}

    bool Checked(std::string_view item) const override;
    void SetChecked(std::string_view item, bool checked) override;
    void SetEnabled(std::string_view name, bool enabled) override;
    void SetVisible(std::string_view item, bool visible) override;
    void PopUp(std::string_view menu, ScreenPlace place) override;

private:
    MainMenu& m_menu;
    MainToolbar& m_toolbar;
    QWidget& m_panes;
};

} // namespace quavernet
