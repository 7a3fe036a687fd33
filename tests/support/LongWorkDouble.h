// The observer of long work and the two views of the library in tests: what they are told is kept, and
// written down in one list of calls.
#pragma once

#include "app/LibraryViews.h"
#include "app/LongWork.h"
#include "app/MainModule.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace quavernet::test {

using CallList = std::vector<std::string>;

class LongWorkDouble : public LongWork {
public:
    LongWorkDouble() = default; ///< For tests that look at no calls.
    explicit LongWorkDouble(CallList& calls) : m_calls(calls) {}

    void SetPanel(Panel panel, const std::string& text) override {
        panels[Number(panel)] = text;
        m_calls.push_back("panel " + std::to_string(Number(panel)) + ": " + text);
    }
    std::string PanelText(Panel panel) const override {
        const auto found = panels.find(Number(panel));
        return found == panels.end() ? std::string() : found->second;
    }
    void SetTitle(const std::string& text) override {
        title = text;
        m_calls.push_back("title: " + text);
    }
    void SetMousePointer(MousePointer pointer) override {
        m_calls.push_back("pointer " + std::to_string(static_cast<int>(pointer)));
    }
    void SetProgress(float value) override {
        progress = value;
        progressValues.push_back(value);
        m_calls.push_back("progress " + std::to_string(value));
    }
    float Progress() const override { return progress; }
    void DoEvents() override { services.events->DoEvents(); }
    bool Cancelled() const override { return cancelled; }
    void SetCancelled(bool value) override { cancelled = value; }
    void TellEnd(const std::string& word) override { endWords.push_back(word); }

    std::map<int, std::string> panels; ///< By their numbers from 1.
    std::string title;
    float progress = 0;
    std::vector<float> progressValues;
    bool cancelled = false;
    std::vector<std::string> endWords;

private:
    static int Number(Panel panel) { return static_cast<int>(panel) + 1; }

    CallList m_ownCalls;
    CallList& m_calls = m_ownCalls;
};

class LibraryViewsDouble : public LibraryViews {
public:
    LibraryViewsDouble() = default;
    explicit LibraryViewsDouble(CallList& calls) : m_calls(calls) {}

    void LoadDatabase(const std::string& list) override { m_calls.push_back("load '" + list + "'"); }
    void LoadTree() override {
        m_calls.push_back("tree");
        if (onLoadTree) {
            onLoadTree();
        }
    }

    std::function<void()> onLoadTree;

private:
    CallList m_ownCalls;
    CallList& m_calls = m_ownCalls;
};

} // namespace quavernet::test
