#include "window/PrintJobs.h"

#include "Lines.h"

#include "adapters/qt/PageTargets.h"
#include "app/MainModule.h"

#include <QPainter>
#include <QPdfWriter>

#include <array>
#include <cstddef>
#include <fstream>
#include <memory>
#include <optional>
#include <stdexcept>

namespace quavernet::bench {

namespace {

constexpr Wanted PrintLimits{.ratio = 1 / 0.7};
constexpr double MemoryOverFloor = 20; // Megabytes.

QPageLayout Paper() {
    return {QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(10, 10, 10, 10)};
}

/// Answers the print dialog with a file.
class GivenPdf : public CommonDialogs {
public:
    explicit GivenPdf(QString path) : m_path(std::move(path)), m_dialogs(services.dialogs) {
        services.dialogs = this;
    }
    ~GivenPdf() override { services.dialogs = m_dialogs; }

    std::optional<std::string> BrowseForFolder(const std::string&) override { return std::nullopt; }
    std::optional<std::string> ShowOpen(const std::string&, const std::string&) override {
        return std::nullopt;
    }
    std::optional<std::string> ShowSave(const std::string&, const std::string&) override {
        return std::nullopt;
    }
    std::optional<ChosenPrinter> ShowPrinter(const std::string&) override {
        return ChosenPrinter{std::make_unique<PaintedPages>(std::make_unique<PdfFile>(m_path, Paper()))};
    }

private:
    QString m_path;
    CommonDialogs* m_dialogs;
};

// As many rows a page, and columns as wide, as the program makes of them; no window, no events, no head.
void PaintBare(const ListRows& rows, const QString& path) {
    constexpr std::size_t RowsOnPage = 47;
    constexpr std::array<double, ListColumnCount> WidthsMm{46, 46, 15, 15, 23, 15};
    QPdfWriter writer(path);
    writer.setPageLayout(Paper());
    QPainter painter(&writer);
    QFont font = QApplication::font();
    font.setPointSizeF(10);
    painter.setFont(font);
    const QFontMetricsF metrics(font, &writer);
    const double millimetre = writer.logicalDpiX() / 25.4;
    const double rowHeight = metrics.height() + millimetre;
    for (std::size_t row = 1; row <= rows.Count(); ++row) {
        const std::size_t onPage = (row - 1) % RowsOnPage;
        if (onPage == 0 && row > 1) {
            writer.newPage();
        }
        double x = 20 * millimetre;
        const double y = 25 * millimetre + static_cast<double>(onPage) * rowHeight + metrics.ascent();
        for (std::size_t column = 0; column < WidthsMm.size(); ++column) {
            const QString text = QString::fromStdString(rows.Text(row, static_cast<ListColumn>(column)));
            const double width = (WidthsMm[column] - 1.6) * millimetre;
            painter.drawText(QPointF(x, y), metrics.elidedText(text, Qt::ElideRight, width));
            x += WidthsMm[column] * millimetre;
        }
    }
}

double StatusMegabytes(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == name) {
            double kilobytes = 0;
            status >> kilobytes;
            return kilobytes / 1024;
        }
    }
    throw std::runtime_error("the system does not tell " + name);
}

/// What an action takes at most beyond what is there before.
template <typename Action> double PeakOf(const Action& action) {
    std::ofstream("/proc/self/clear_refs") << "5"; // The peak counts from here.
    const double before = StatusMegabytes("VmRSS:");
    action();
    return StatusMegabytes("VmHWM:") - before;
}

} // namespace

void PrintJobs(RealWindow& window, const std::string& work, int rounds) {
    const ListRows rows = window.Grid().Model().Rows();
    const QString bare = QString::fromStdString(work + "/bare.pdf");
    const GivenPdf dialog(QString::fromStdString(work + "/list.pdf"));
    const auto print = [&] {
        if (!window.Form().Parts().Commands.Run("mnuPrint")) {
            throw std::runtime_error("the command to print does not run");
        }
    };
    const auto paint = [&] { PaintBare(rows, bare); };
    // Before anything else has been painted, so that neither finds what the other has left in memory: the
    // program first, which has more to lose.
    const double peak = PeakOf(print);
    const double barePeak = PeakOf(paint);
    const std::string job = std::to_string(rows.Count()) + " rows printed to a PDF file";
    Print(Measure(job, rows.Count(), PrintLimits, rounds, {nullptr, print}, {nullptr, paint}));
    Print({"memory for that", "MB", peak, barePeak, 0, {.limit = barePeak + MemoryOverFloor}});
}

} // namespace quavernet::bench
