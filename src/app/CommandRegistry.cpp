#include "app/CommandRegistry.h"

#include "app/Controls.h"
#include "app/MayAct.h"
#include "app/ScopedValue.h"
#include "platform/RuntimeError.h"

#include <utility>

namespace quavernet {

CommandRegistry::CommandRegistry(const std::vector<std::string_view>& names)
    : m_names(names.begin(), names.end()) {}

void CommandRegistry::Add(std::string_view name, Entry entry) {
    const auto refuse = [name](const char* why) {
        throw RuntimeError(ErrorNumber::InvalidProcedureCall,
                           "Invalid procedure call or argument: " + std::string(name) + why);
    };
    if (!m_names.contains(name)) {
        refuse(" is in no menu and on no toolbar");
    }
    if (!m_commands.emplace(name, std::move(entry)).second) {
        refuse(" is registered twice");
    }
}

void CommandRegistry::Register(std::string_view name, Command command) {
    Add(name, {std::move(command), false, false});
}

void CommandRegistry::RegisterAlone(std::string_view name, Command command) {
    Add(name, {std::move(command), false, true});
}

void CommandRegistry::RegisterForScan(std::string_view name, Command command) {
    Add(name, {std::move(command), true, false});
}

void CommandRegistry::RegisterMark(std::string_view name) {
    Register(name, [] {});
}

void CommandRegistry::RegisterMarkPair(std::string_view first, std::string_view second, Controls& controls,
                                       const std::function<void(bool)>& command) {
    for (const std::string_view name : {first, second}) {
        Register(name, [&controls, command, first = std::string(first), second = std::string(second),
                        clicked = std::string(name)] {
            const bool checked = controls.Checked(clicked);
            controls.SetChecked(first, checked);
            controls.SetChecked(second, checked);
            command(checked);
        });
    }
}

bool CommandRegistry::Run(std::string_view name) const {
    const auto found = m_commands.find(name);
    if (found == m_commands.end() || !(MayAct() || found->second.RunsDuringScan)) {
        return false;
    }
    const ScopedValue alone(mainModule.ActsAlone, mainModule.ActsAlone || found->second.RunsAlone);
    found->second.Action();
    return true;
}

} // namespace quavernet
