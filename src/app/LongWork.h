// How a long task reports progress, lets events run and learns that it was cancelled: scan, list, cleaning
// and start have one. The main window brings the one real observer; tests have a double.
#pragma once

#include <string>

namespace quavernet {

/// The panels of the status bar, in their order. A running scan shows percent, time left and time used in the
/// second to fourth.
enum class Panel { Scanning, Filecount, Interprets, Titles, Albums, Progressbar };

enum class MousePointer { Default = 0, Hourglass = 11 };

class LongWork {
public:
    virtual ~LongWork() = default;

    /// The panel Scanning names the work that goes on.
    virtual void SetPanel(Panel panel, const std::string& text) = 0;
    virtual std::string PanelText(Panel panel) const = 0;
    virtual void SetTitle(const std::string& text) = 0; ///< Of the main window.
    virtual void SetMousePointer(MousePointer pointer) = 0;
    virtual void SetProgress(float value) = 0; ///< 0 to 100; fractions are kept.
    virtual float Progress() const = 0;

    /// Lets pending events run: any handler may run inside the work.
    virtual void DoEvents() = 0;

    /// Whether the user wants the work to end. Work that can be cancelled clears the mark when it begins.
    virtual bool Cancelled() const = 0;
    virtual void SetCancelled(bool cancelled) = 0;

    /// Tells the user how a long job has ended, wherever the window is; see EndWord.h. The panels stay as
    /// they are.
    virtual void TellEnd(const std::string& word) = 0;
};

} // namespace quavernet
