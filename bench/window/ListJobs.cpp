#include "window/ListJobs.h"

#include "Floors.h"
#include "Lines.h"

#include "app/MainModule.h"

#include <fstream>
#include <stdexcept>

namespace quavernet::bench {

namespace {

constexpr const char* Orders[] = {"performer", "title", "length", "size", "quality", "format"};
constexpr Wanted TwiceTheFloor{.ratio = 2};
constexpr Wanted CombosFilled{.limit = 0.01};
constexpr Wanted PeakMegabytes{.limit = 600};

class Lists {
public:
    Lists(RealWindow& window, int rounds)
        : m_window(window), m_rounds(rounds), m_library(LibraryPath()),
          m_rows(window.Grid().Model().Rows().Count()), m_size(", " + std::to_string(m_rows) + " rows") {}

    /// Prints a job whose floor reads the rows of AllRows with `filter` after it.
    void Job(const std::string& name, const std::function<void()>& prepare,
             const std::function<void()>& action, const std::string& filter) {
        const Timed painted{prepare, [&] { m_window.UntilPainted(action); }};
        const Timed floor{nullptr, [&] { m_found = m_library.ReadAll(AllRows + filter); }};
        const Line line = Measure(name + m_size, 0, TwiceTheFloor, m_rounds, painted, floor);
        m_window.RequireShown();
        Print(line);
    }
    /// As Job, for an action whose result must have as many rows as its floor has read.
    void FilterJob(const std::string& name, const std::function<void()>& prepare,
                   const std::function<void()>& action, const std::string& filter) {
        Job(name, prepare, action, filter);
        RequireListed(m_found);
    }
    void ComboJob(const char* combo, int index, const std::string& name) {
        auto& box = m_window.Control<QComboBox>(combo);
        const std::string key = box.itemData(index).toString().toStdString();
        const auto showAll = [&] {
            if (box.currentIndex() != 0) {
                m_window.UntilPainted([&] { box.setCurrentIndex(0); });
            }
        };
        FilterJob(
            "filter by " + name, showAll, [&] { box.setCurrentIndex(index); },
            " and F." + name + "_id = " + key);
        showAll();
    }
    void PaintJob() {
        Print(Measure("one painting of the rows in view" + m_size, 0, {}, m_rounds,
                      {nullptr, [&] { m_window.PaintAgain(); }}, {}));
    }
    void FillCombos() {
        FilterRow& filter = m_window.Form().Panes().Filter();
        Print(Measure("filling the three combos, 5000 albums", 0, CombosFilled, m_rounds,
                      {nullptr,
                       [&] {
                           filter.FillDriveCombo();
                           filter.FillGenreCombo();
                           filter.FillAlbumCombo();
                       }},
                      {nullptr, [&] {
                           m_library.ReadAll("select Drive, Drive_id from Drive where Drive_id in "
                                             "(select Drive_id from Files)");
                           m_library.ReadAll("select Genre, Genre_id from Genres where Genre_id in "
                                             "(select Genre_id from Files)");
                           m_library.ReadAll("select Name, Album_id from Albums where Album_id in "
                                             "(select Album_id from Files)");
                       }}));
    }
    void RequireListed(std::size_t rows) const {
        const std::size_t listed = m_window.Grid().Model().Rows().Count();
        if (listed != rows || rows == 0) {
            throw std::runtime_error("listed " + std::to_string(listed) + " rows, not " +
                                     std::to_string(rows));
        }
    }

private:
    RealWindow& m_window;
    int m_rounds;
    BareLibrary m_library;
    std::size_t m_rows;
    std::string m_size;
    std::size_t m_found = 0;
};

void SortBy(RealWindow& window, int column) {
    emit window.Grid().DoubleClicked(column, 0); // As a double click on the header.
}

void Search(RealWindow& window) {
    window.Control<QPushButton>("cmdSearch").click();
}

double PeakOfThisProcess() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == "VmHWM:") {
            double kilobytes = 0;
            status >> kilobytes;
            return kilobytes / 1024;
        }
    }
    throw std::runtime_error("the system does not tell the peak of memory");
}

} // namespace

void ListJobs(RealWindow& window, int rounds) {
    Lists lists(window, rounds);
    for (int column = 0; column < ListColumnCount; ++column) {
        lists.FilterJob(
            std::string("list by ") + Orders[column], nullptr, [&] { SortBy(window, column); }, "");
    }
    SortBy(window, 0);
    auto& text = window.Control<QLineEdit>("txtSearch");
    text.setText(QStringLiteral("nacht"));
    lists.FilterJob(
        "search", nullptr, [&] { Search(window); },
        " and (I.Interpret like '%nacht%' or T.Name like '%nacht%')");
    text.clear();
    lists.Job(
        "letter", nullptr, [&] { emit window.Control<LetterLabel>("lblB").Clicked(); }, "");
    emit window.Control<LetterLabel>("lblAll").Clicked();
    lists.ComboJob("cboDrive", 1, "drive");
    lists.ComboJob("cboGenre", 17, "genre");
    lists.ComboJob("cboAlbum", 2500, "album");
    lists.PaintJob();
    lists.FillCombos();
}

void ListMemory(RealWindow& window) {
    const std::size_t rows = window.Grid().Model().Rows().Count();
    for (int column = 0; column < ListColumnCount; ++column) {
        window.UntilPainted([&] { SortBy(window, column); });
    }
    window.Control<QLineEdit>("txtSearch").setText(QStringLiteral("nacht"));
    window.UntilPainted([&] { Search(window); });
    const Line line{"peak of memory, lists of " + std::to_string(rows) + " rows",
                    "MB",
                    PeakOfThisProcess(),
                    0,
                    0,
                    PeakMegabytes};
    Print(line);
}

} // namespace quavernet::bench
