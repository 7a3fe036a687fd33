// The status bar: six panels by key, with the progress bar over the last one. Texts may be set for every file
// of a scan; they are painted twenty times a second at most.
#pragma once

#include "app/LongWork.h"
#include "widgets/AccessibleParts.h"

#include <QElapsedTimer>
#include <QProgressBar>
#include <QTimer>
#include <QWidget>

#include <array>
#include <string>

namespace quavernet {

class MainStatusBar : public QWidget, public PartedControl {
    Q_OBJECT
public:
    explicit MainStatusBar(QWidget* parent);

    void SetText(Panel panel, const std::string& text);
    const std::string& Text(Panel panel) const { return m_texts[static_cast<std::size_t>(panel)]; }

    /// What the last movement of the mouse over the bar set, and for the first panel its own text, which may
    /// be shown shortened.
    QString ToolTip(Panel panel) const;

    /// How the last long job has ended. The tool tip of the first panel tells it, below the panel's own text.
    void SetLastEnd(const std::string& word) { m_lastEnd = word; }
    const std::string& LastEnd() const { return m_lastEnd; }
    /// Shows that tool tip for some seconds, without the mouse.
    void HintLastEnd();

    /// 0 to 100; fractions are kept.
    void SetProgress(float value);
    float Progress() const { return m_progress; }
    QProgressBar& ProgressBar() { return *m_bar; }
    /// Width of the last panel, in pixels.
    void SetProgressPanel(int width);

    /// Where the panels stand, in their order.
    std::array<QRect, 6> PanelRects() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    QAccessible::Role PartedRole() const override { return QAccessible::StatusBar; }
    std::vector<AccessiblePart> Parts() const override;
    void PressPart(int) override {} // They are read alone.

    void ShowProgress();

    std::array<std::string, 6> m_texts;
    std::array<std::string, 6> m_toolTips;
    std::string m_lastEnd;
    QProgressBar* m_bar;
    QTimer m_paintTimer;
    QElapsedTimer m_sinceBarPaint;
    float m_progress = 0;
    int m_progressPanel = 0;
};

} // namespace quavernet
