// The commands of the program by the names of their menu items and toolbar buttons. Each room registers its
// own when the main window is made; menus and toolbar show what is registered, and run it from here.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace quavernet {

class Controls;

class CommandRegistry {
public:
    using Command = std::function<void()>;

    /// `names`: what may be registered, that is the items of the menus and the keys of the toolbar.
    explicit CommandRegistry(const std::vector<std::string_view>& names);

    /// Throws RuntimeError 5 for a name that is unknown or registered already: the program does not start.
    void Register(std::string_view name, Command command);

    /// As Register, for the one kind of command that runs while a scan does.
    void RegisterForScan(std::string_view name, Command command);

    /// As Register, for a command that lets events run and in which nothing else may act; see MayAct.
    void RegisterAlone(std::string_view name, Command command);

    /// An item that is nothing but its check mark, read where it counts.
    void RegisterMark(std::string_view name);

    /// Two check marks that work as one: a click on either sets both, then the command gets the new mark.
    void RegisterMarkPair(std::string_view first, std::string_view second, Controls& controls,
                          const std::function<void(bool)>& command);

    bool Contains(std::string_view name) const { return m_commands.contains(name); }

    /// Runs the command; failures pass through. False if there is none of that name, or if nothing may act.
    bool Run(std::string_view name) const;

private:
    struct Entry {
        Command Action;
        bool RunsDuringScan = false;
        bool RunsAlone = false;
    };
    void Add(std::string_view name, Entry entry);

    std::set<std::string, std::less<>> m_names;
    std::map<std::string, Entry, std::less<>> m_commands;
};

} // namespace quavernet
