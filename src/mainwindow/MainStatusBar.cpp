#include "mainwindow/MainStatusBar.h"

#include "adapters/qt/QtText.h"
#include "browser/FilterEvents.h"
#include "widgets/Colours.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <numeric>

namespace quavernet {

namespace {
constexpr int FrameTimeMs = 50; // Painting takes time away from a scan.
constexpr int PaddingPx = 5;
constexpr int HintTimeMs = 8000;
} // namespace

MainStatusBar::MainStatusBar(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("StatusBar"));
    setMouseTracking(true);
    // Beside the bar's own panels, not inside the widget: the main window places it.
    m_bar = new QProgressBar(parent);
    m_bar->setObjectName(QStringLiteral("ProgressBar"));
    // One above the highest value that is ever set, so that a full bar never reads as finished.
    m_bar->setRange(0, 101);
    m_bar->setTextVisible(false);
    m_paintTimer.setSingleShot(true);
    m_paintTimer.setInterval(FrameTimeMs);
    connect(&m_paintTimer, &QTimer::timeout, this, [this] {
        update();
        ShowProgress();
    });
}

void MainStatusBar::SetText(Panel panel, const std::string& text) {
    std::string& shown = m_texts[static_cast<std::size_t>(panel)];
    if (shown == text) {
        return;
    }
    shown = text;
    if (!m_paintTimer.isActive()) {
        update();
        m_paintTimer.start();
    }
}

QString MainStatusBar::ToolTip(Panel panel) const {
    if (panel != Panel::Scanning) {
        return ToQString(m_toolTips[static_cast<std::size_t>(panel)]);
    }
    const std::string& text = Text(panel);
    if (text.empty() || text == m_lastEnd) {
        return ToQString(m_lastEnd);
    }
    return ToQString(m_lastEnd.empty() ? text : text + '\n' + m_lastEnd);
}

void MainStatusBar::HintLastEnd() {
    const QRect panel = PanelRects().front();
    const QPoint place(panel.left() + PaddingPx, -2 * panel.height());
    QToolTip::showText(mapToGlobal(place), ToQString(m_lastEnd), this, {}, HintTimeMs);
}

void MainStatusBar::mouseMoveEvent(QMouseEvent*) {
    for (PanelToolTip& tip :
         StatusBarToolTips(Text(Panel::Titles), Text(Panel::Interprets), Text(Panel::Albums))) {
        m_toolTips[static_cast<std::size_t>(tip.Panel)] = std::move(tip.Text);
    }
}

void MainStatusBar::SetProgressPanel(int width) {
    m_progressPanel = width;
    update();
}

void MainStatusBar::SetProgress(float value) {
    m_progress = value;
    if (static_cast<int>(value) == m_bar->value()) {
        return;
    }
    // The bar draws itself at once, also where no events run; an empty bar is never late.
    if (value <= 0 || !m_sinceBarPaint.isValid() || m_sinceBarPaint.elapsed() >= FrameTimeMs) {
        ShowProgress();
    } else if (!m_paintTimer.isActive()) {
        m_paintTimer.start();
    }
}

void MainStatusBar::ShowProgress() {
    m_sinceBarPaint.start();
    m_bar->setValue(static_cast<int>(m_progress));
}

std::array<QRect, 6> MainStatusBar::PanelRects() const {
    // The counters get room for what a large library needs, the first panel takes the rest.
    const QFontMetrics metrics(font());
    const auto room = [&](std::initializer_list<const char*> samples) {
        int widest = 0;
        for (const char* sample : samples) {
            widest = std::max(widest, metrics.horizontalAdvance(QLatin1String(sample)));
        }
        return widest + 2 * PaddingPx;
    };
    // A running scan has its times in the same panels.
    std::array<int, 5> widths{
        room({"100000 Dateien / (999.999,99 MB)"}), room({"100000 Interpreten", "verbl.: 00:00:00"}),
        room({"100000 Tracks", "Time: 00:00:00"}), room({"100000 Albums"}), m_progressPanel};
    // In a narrow window the counters give up what their texts leave free until the first panel has a third.
    int missing = width() / 3 - (width() - std::accumulate(widths.begin(), widths.end(), 0));
    for (std::size_t i = 0; i < 4 && missing > 0; ++i) {
        const int text = metrics.horizontalAdvance(ToQString(m_texts[i + 1])) + 2 * PaddingPx;
        const int given = std::clamp(widths[i] - text, 0, missing);
        widths[i] -= given;
        missing -= given;
    }
    std::array<QRect, 6> rects;
    int right = width();
    for (std::size_t i = 5; i >= 1; --i) {
        right -= widths[i - 1];
        rects[i] = QRect(right, 0, widths[i - 1], height());
    }
    rects[0] = QRect(0, 0, std::max(right, 0), height());
    return rects;
}

void MainStatusBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QColor line = ColourOf(OwnColour::Edge, palette());
    painter.setPen(line);
    painter.drawLine(0, 0, width(), 0);
    const auto rects = PanelRects();
    for (std::size_t i = 0; i < rects.size(); ++i) {
        const QRect& rect = rects[i];
        if (i > 0) {
            painter.setPen(line);
            painter.drawLine(rect.left(), 4, rect.left(), height() - 4);
        }
        painter.setPen(palette().color(QPalette::WindowText));
        const QRect inner = rect.adjusted(PaddingPx, 1, -PaddingPx + 1, 0);
        painter.drawText(inner, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                         fontMetrics().elidedText(ToQString(m_texts[i]), Qt::ElideMiddle, inner.width()));
    }
}

// The last panel holds the bar, which speaks for itself.
std::vector<AccessiblePart> MainStatusBar::Parts() const {
    const auto rects = PanelRects();
    std::vector<AccessiblePart> parts;
    for (std::size_t i = 0; i + 1 < rects.size(); ++i) {
        parts.push_back({.Name = ToQString(m_texts[i]), .Place = rects[i]});
    }
    return parts;
}

bool MainStatusBar::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const auto rects = PanelRects();
        for (std::size_t i = 0; i < rects.size(); ++i) {
            if (rects[i].contains(help->pos())) {
                QToolTip::showText(help->globalPos(), ToolTip(static_cast<Panel>(i)), this, rects[i]);
            }
        }
        return true;
    }
    return QWidget::event(event);
}

} // namespace quavernet
