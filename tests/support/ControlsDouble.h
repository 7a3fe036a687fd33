// Menu items and controls of a window that is not there: check marks are kept, switches are written down.
#pragma once

#include "app/Controls.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace quavernet::test {

class ControlsDouble : public Controls {
public:
    bool Checked(std::string_view item) const override { return checked.contains(std::string(item)); }
    void SetChecked(std::string_view item, bool on) override {
        if (on) {
            checked.emplace(item);
        } else {
            checked.erase(std::string(item));
        }
    }
    void SetEnabled(std::string_view name, bool on) override { enabled[std::string(name)] = on; }
    void SetVisible(std::string_view item, bool on) override { visible[std::string(item)] = on; }
    void PopUp(std::string_view menu, ScreenPlace) override { popUps.emplace_back(menu); }

    std::set<std::string> checked;
    std::map<std::string, bool> enabled;
    std::map<std::string, bool> visible;
    std::vector<std::string> popUps;
};

} // namespace quavernet::test
