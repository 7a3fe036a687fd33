#include "window/TreeJobs.h"

#include "Floors.h"
#include "Lines.h"
#include "ScanJobs.h"
#include "TreeFloors.h"
#include "window/BareTree.h"
#include "window/TreeChangeJobs.h"

#include "adapters/qt/FileUris.h"
#include "app/MainModule.h"
#include "tree/TreeView.h"

#include <QDropEvent>
#include <QMimeData>

#include <memory>
#include <stdexcept>

namespace quavernet::bench {

namespace {

constexpr int Categories = 100;
constexpr Wanted LoadLimits{.ratio = 2, .limit = 0.4};
constexpr Wanted DropLimits{.ratio = 2};

std::string CategoryName(int number) {
    return "Category " + std::to_string(1000 + number);
}

void Insert(const std::string& head, std::string& values) {
    if (!values.empty()) {
        mainModule.Connection->Execute(head + " values " + values);
        values.clear();
    }
}

/// Deals the files out to the categories in turn, so that the order of the rows is no order of the tree.
void FillTree(std::size_t files) {
    constexpr std::size_t RowsAtOnce = 400;
    std::string values;
    for (int number = 1; number <= Categories; ++number) {
        values +=
            (values.empty() ? "(" : ", (") + std::to_string(number) + ", '" + CategoryName(number) + "')";
    }
    Insert("Insert into Categories (Category_id, Category)", values);
    const std::string head = "Insert into FileCategories (File_id, Category_id, Position, Parent, Filename)";
    for (std::size_t number = 0; number < files; ++number) {
        const auto category = static_cast<int>(number % Categories) + 1;
        values += (values.empty() ? "(" : ", (") + std::to_string(number + 1) + ", " +
                  std::to_string(category) + ", " + std::to_string(number / Categories + 1) + ", '" +
                  CategoryName(category) + "', '" + std::to_string(number + 1) + ".mp3')";
        if (number % RowsAtOnce == 0) {
            Insert(head, values);
        }
    }
    Insert(head, values);
    mainModule.Connection->Commit();
}

class Trees {
public:
    Trees(RealWindow& window, int rounds)
        : m_window(window), m_rounds(rounds), m_library(OpenTree(LibraryPath())), m_entries(Entries()),
          m_bare({Categories, m_entries}) {
        m_bare.ShowLike(Tree());
    }

    void LoadJob(bool open) {
        const Timed painted{
            nullptr, [&] { m_window.UntilPainted([&] { m_window.Form().Tree().LoadTree(); }, Tree()); }};
        const Timed floor{nullptr, [&] {
                              ReadTree(*m_library);
                              m_window.UntilPainted([&] { m_bare.Fill(open); }, m_bare);
                          }};
        for (int number = 1; open && number <= Categories; ++number) {
            mainModule.TreeNodeData.Add("CAT_" + CategoryName(number));
        }
        Print(Measure(std::string("tree to the painted nodes, ") + std::to_string(m_entries) + " entries, " +
                          (open ? "all open" : "all closed"),
                      m_entries, LoadLimits, m_rounds, painted, floor));
        RequireLoaded(open);
    }

    // What a drag over the tree must do that one over the list does not: where the mark goes and where it
    // comes from are painted.
    void PaintMarksJob() {
        const auto paint = [&](int row) {
            Tree().viewport()->repaint(
                Tree().visualRect(Tree().model()->index(row, 0, Tree().model()->index(0, 0))));
        };
        const Timed marks{nullptr, [&] {
                              for (int move = 0; move < Moves; ++move) {
                                  paint(move % RowsInView);
                                  paint((move + 1) % RowsInView);
                              }
                          }};
        Print(Measure("bare painting of the tree's mark, " + std::to_string(Moves) + " moves", Moves, {},
                      m_rounds, marks, {}));
    }

private:
    static constexpr int Moves = 250; // As a drag of five seconds has.
    static constexpr int RowsInView = 10;

    TreeView& Tree() { return m_window.Form().Panes().Tree(); }
    std::size_t Entries() { return m_library->ReadAll("select FileCategory_id from FileCategories"); }

    void RequireLoaded(bool open) {
        const auto shown = m_window.Form().Tree().Model().Nodes().size();
        const QModelIndex last = Tree().model()->index(Categories - 1, 0, Tree().model()->index(0, 0));
        if (shown != 1 + Categories + m_entries || Tree().isExpanded(last) != open) {
            throw std::runtime_error("the tree shows " + std::to_string(shown) + " nodes");
        }
    }

    RealWindow& m_window;
    int m_rounds;
    std::unique_ptr<BareLibrary> m_library;
    std::size_t m_entries;
    BareTree m_bare;
};

/// Rows of the list, dropped on the one category that there is.
class Drops {
public:
    Drops(RealWindow& window, int rounds) : m_window(window), m_rounds(rounds), m_bareTree({1, Rows}) {
        BareLibrary library(LibraryPath());
        m_bareRows = library.Rows();
        mainModule.Connection->Execute("Insert into Categories (Category) values ('Target')");
        GridSelection& selection = window.Grid().Selection();
        selection.MoveTo(1, false);
        selection.MoveTo(Rows, true);
        for (const std::int32_t row : mainModule.SelectedRows.Rows()) {
            m_paths.push_back(mainModule.FilePaths.Item(row));
        }
        m_bareTree.ShowLike(Tree());
    }
    ~Drops() {
        mainModule.Connection->Execute("Delete from Categories");
        mainModule.Connection->Execute("Delete from FileCategories");
    }
    Drops(const Drops&) = delete;
    Drops& operator=(const Drops&) = delete;

    void DropJob() {
        const Timed drop{[&] { Empty(); }, [&] { m_window.UntilPainted([&] { Drop(); }, Tree()); }};
        const Timed floor{[&] { EmptyBare(); },
                          [&] {
                              m_bare->AddEntries(m_paths);
                              m_window.UntilPainted([&] { m_bareTree.Fill(false); }, m_bareTree);
                          }};
        Print(Measure("drop of " + std::to_string(Rows) + " rows of the list on a category", Rows, DropLimits,
                      m_rounds, drop, floor));
        if (m_window.Form().Tree().Model().Nodes().size() != Rows + 2) {
            throw std::runtime_error("the drop has not made its entries");
        }
    }

private:
    static constexpr int Rows = 5000;

    TreeView& Tree() { return m_window.Form().Panes().Tree(); }
    void Empty() {
        mainModule.Connection->Execute("Delete from FileCategories");
        m_window.UntilPainted([&] { m_window.Form().Tree().LoadTree(); }, Tree());
        mainModule.Connection->Commit();
        m_window.Form().Parts().Drag.GridDragging = true;
    }
    void EmptyBare() {
        m_bare.reset();
        RemoveLibrary(LibraryPath() + ".bare");
        m_bare = OpenTree(LibraryPath() + ".bare");
        m_bare->CreateTables();
        m_bare->WriteRows(m_bareRows);
        m_bare->CreateTreeTables();
    }
    // As the toolkit tells of a drag that comes and is dropped.
    void Drop() {
        const std::unique_ptr<QMimeData> files(FilesToOffer(m_paths));
        TreeItems& items = Tree().Items();
        const QPoint place = Tree().visualRect(items.IndexOf(items.Model().Node("CAT_Target"))).center();
        QDragEnterEvent enter(place, Qt::CopyAction, files.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(Tree().viewport(), &enter);
        QDropEvent drop(place, Qt::CopyAction, files.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(Tree().viewport(), &drop);
    }

    RealWindow& m_window;
    int m_rounds;
    std::vector<StoredRow> m_bareRows;
    std::vector<std::string> m_paths;
    std::unique_ptr<BareLibrary> m_bare;
    BareTree m_bareTree;
};

} // namespace

void TreeJobs(RealWindow& window, const std::string& work, int rounds) {
    Drops(window, rounds).DropJob();
    FillTree(window.Grid().Model().Rows().Count());
    {
        Trees trees(window, rounds);
        trees.LoadJob(false);
        trees.PaintMarksJob();
        trees.LoadJob(true);
    }
    mainModule.TreeNodeData.Clear();
    TreeChangeJobs(window, work, rounds);
}

} // namespace quavernet::bench
