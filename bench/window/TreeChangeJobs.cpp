#include "window/TreeChangeJobs.h"

#include "Lines.h"
#include "ScanJobs.h"
#include "TreeFloors.h"
#include "window/BareTree.h"

#include "app/MainModule.h"
#include "platform/Printer.h"

#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>

namespace quavernet::bench {

namespace {

constexpr std::size_t Deleted = 5000;   ///< Files, the first ones of the list.
constexpr std::size_t Imported = 50000; ///< Entries of the exchange file.
constexpr Wanted ChangeLimits{.ratio = 2};

/// Answers the dialog of an import.
class GivenFile : public CommonDialogs {
public:
    explicit GivenFile(std::string path) : m_path(std::move(path)), m_dialogs(services.dialogs) {
        services.dialogs = this;
    }
    ~GivenFile() override { services.dialogs = m_dialogs; }

    std::optional<std::string> BrowseForFolder(const std::string&) override { return m_path; }
    std::optional<std::string> ShowOpen(const std::string&, const std::string&) override { return m_path; }
    std::optional<std::string> ShowSave(const std::string&, const std::string&) override { return m_path; }
    std::optional<ChosenPrinter> ShowPrinter(const std::string&) override { return std::nullopt; }

private:
    std::string m_path;
    CommonDialogs* m_dialogs;
};

class Changes {
public:
    Changes(RealWindow& window, const std::string& work, int rounds)
        : m_window(window), m_rounds(rounds), m_program(work + "/tree.db"), m_bare(work + "/bare-tree.db"),
          m_exchangeFile(work + "/tree.qvn"), m_copy(work + "/bare-round.db") {
        CloseLibrary(); // Closed, it is one file.
        std::filesystem::copy_file(LibraryPath(), m_program);
        CopyTree(m_program, m_bare);
        PutBareBack();
        m_categories = m_library->ReadAll("select Category_id from Categories");
        m_entries = m_library->ReadAll("select FileCategory_id from FileCategories");
        WriteExchangeFile();
        for (std::size_t row = 1; row <= Deleted; ++row) {
            m_paths.push_back(mainModule.FilePaths.Item(static_cast<std::int32_t>(row)));
        }
    }

    // Most of the time goes into the positions that move up, some 500 for each file: few rounds will do.
    void Delete() {
        const Size after{m_categories, m_entries - Deleted};
        BareTree bareTree(after);
        bareTree.ShowLike(Tree());
        const auto prepare = [&] {
            PutBack();
            mainModule.SelectedRows.Clear();
            mainModule.SelectedRows.AddRange(1, Deleted);
        };
        const Timed floor{[&] { PutBareBack(); },
                          [&] {
                              DeleteFiles(*m_library, m_paths);
                              ShowBareTree(bareTree);
                              m_library->ReadAll(AllRows);
                          }};
        Print(Measure("deleting " + std::to_string(Deleted) + " files from the library", Deleted,
                      ChangeLimits, (m_rounds + 1) / 2, {prepare, [&] { Run("mnuKontextDelete"); }}, floor));
        Require(after);
    }
    void Import() {
        const Size after{2 * m_categories, m_entries + Imported};
        BareTree bareTree(after);
        bareTree.ShowLike(Tree());
        const GivenFile answer(m_exchangeFile);
        const Timed floor{[&] { PutBareBack(); },
                          [&] {
                              ImportEntries(*m_library, m_exchangeFile);
                              ShowBareTree(bareTree);
                          }};
        Print(Measure("import of " + std::to_string(Imported) + " entries", Imported, ChangeLimits, m_rounds,
                      {[&] { PutBack(); }, [&] { Run("mnuImport"); }}, floor));
        Require(after);
    }

private:
    using Size = BareTree::Size;

    TreeView& Tree() { return m_window.Form().Panes().Tree(); }

    static void CloseLibrary() {
        mainModule.Connection->Commit();
        mainModule.Connection.reset();
    }
    void PutBack() {
        if (mainModule.Connection) {
            CloseLibrary();
        }
        RemoveLibrary(LibraryPath());
        std::filesystem::copy_file(m_program, LibraryPath());
        mainModule.Connection = services.createConnection();
        mainModule.Connection->Open(mainModule.ConnectionString);
        m_window.UntilPainted([&] { m_window.Form().Parts().Views.LoadDatabase({}); });
        m_window.UntilPainted([&] { m_window.Form().Tree().LoadTree(); }, Tree());
    }
    void PutBareBack() {
        m_library.reset();
        RemoveLibrary(m_copy);
        std::filesystem::copy_file(m_bare, m_copy);
        m_library = OpenTree(m_copy);
    }

    // The first entries of the tree, as an export writes them.
    void WriteExchangeFile() {
        std::ofstream file(m_exchangeFile, std::ios::binary);
        file << "#Categories\n";
        for (const auto& row : m_library->Texts("select Category from Categories")) {
            file << row[0] << "\n";
        }
        file << "#Files\n";
        for (const auto& row : m_library->Texts(
                 "select FC.Position, FC.Parent, FC.Filename, F.Path from FileCategories FC join Files F "
                 "on F.File_id = FC.File_id order by FC.FileCategory_id limit " +
                 std::to_string(Imported))) {
            file << row[0] << "," << row[1] << "," << row[2] << "," << row[3] << "\n";
        }
        if (!file.flush()) {
            throw std::runtime_error("can't write " + m_exchangeFile);
        }
    }

    void Run(const char* command) {
        if (!m_window.Form().Parts().Commands.Run(command)) {
            throw std::runtime_error(std::string("no command ") + command);
        }
        // Parts of the new content may have been painted while the command let events run.
        Tree().viewport()->repaint();
        m_window.PaintAgain();
    }
    void ShowBareTree(BareTree& bareTree) {
        ReadTree(*m_library);
        m_window.UntilPainted([&] { bareTree.Fill(false); }, bareTree);
    }

    // The floor must have changed its library alike.
    void Require(const Size& size) {
        const std::size_t nodes = 1 + size.groups + size.rows;
        const std::size_t shown = m_window.Form().Tree().Model().Nodes().size();
        const std::size_t bare = 1 + m_library->ReadAll("select Category_id from Categories") +
                                 m_library->ReadAll("select FileCategory_id from FileCategories");
        if (shown != nodes || bare != nodes) {
            throw std::runtime_error("the tree shows " + std::to_string(shown) + " nodes, the floor has " +
                                     std::to_string(bare) + ", not " + std::to_string(nodes));
        }
    }

    RealWindow& m_window;
    int m_rounds;
    std::string m_program; ///< The program's library as it is before each round.
    std::string m_bare;    ///< The floor's.
    std::string m_exchangeFile;
    std::string m_copy; ///< The floor's library of the round.
    std::unique_ptr<BareLibrary> m_library;
    std::size_t m_categories = 0;
    std::size_t m_entries = 0;
    std::vector<std::string> m_paths; ///< Of the files to delete.
};

} // namespace

void TreeChangeJobs(RealWindow& window, const std::string& work, int rounds) {
    Changes changes(window, work, rounds);
    changes.Delete();
    changes.Import();
}

} // namespace quavernet::bench
