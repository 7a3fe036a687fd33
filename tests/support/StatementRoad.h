// Which pieces of the library's connection take a statement on its way to the engine: what went out through a
// recorder is laid beside what the engine ran.
#pragma once

#include "support/EngineStatements.h"
#include "support/RecordingConnection.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <iterator>
#include <regex>
#include <string>
#include <vector>

namespace quavernet::test {

/// Notes the road of every statement from here on. The library must have been opened while an
/// EngineStatements lived.
class StatementRoad {
public:
    explicit StatementRoad(RecordingConnection& connection) {
        connection.onStatement = [this](const std::string& statement) {
            m_sent.push_back({statement, EngineStatements::Runs().size()});
        };
    }

    /// Each kind of statement once, in the order of their first appearance: the statement with "?" in place
    /// of its values, then ": " and what was done with it.
    ///
    ///     rewritten   "[A.B]" has become "[A].[B]"
    ///     lifted      every value has become a parameter (partly: some have)
    ///     kept        a later one ran in the prepared form of an earlier one
    ///     guarded     rows that hold the new values already are not written
    ///     ordered     the engine was not given the order
    ///     limited     the engine was told to end after the first rows
    ///     remembered  a later one was answered without the engine
    std::vector<std::string> Kinds() const {
        std::vector<Kind> kinds;
        for (std::size_t i = 0; i < m_sent.size(); ++i) {
            const std::string name = WithoutValues(m_sent[i].text);
            auto kind =
                std::find_if(kinds.begin(), kinds.end(), [&](const Kind& k) { return k.name == name; });
            if (kind == kinds.end()) {
                kind = kinds.insert(kind, Kind{name, {}, name != m_sent[i].text, false, false});
            }
            const std::size_t end =
                i + 1 < m_sent.size() ? m_sent[i + 1].runs : EngineStatements::Runs().size();
            Note(*kind, m_sent[i].runs, end);
        }
        std::vector<std::string> texts;
        std::transform(kinds.begin(), kinds.end(), std::back_inserter(texts), &StatementRoad::Told);
        return texts;
    }

    /// The first statement of each kind, as it went out.
    std::vector<std::string> FirstOfEachKind() const {
        std::vector<std::string> names;
        std::vector<std::string> texts;
        for (const Sent& sent : m_sent) {
            const std::string name = WithoutValues(sent.text);
            if (std::find(names.begin(), names.end(), name) == names.end()) {
                names.push_back(name);
                texts.push_back(sent.text);
            }
        }
        return texts;
    }

private:
    struct Sent {
        std::string text;
        std::size_t runs; ///< The engine's runs before it.
    };
    struct Kind {
        std::string name;
        std::string engine; ///< What the engine ran for it.
        bool hasValues;
        bool isKept;
        bool isRemembered;
    };

    static std::string WithoutValues(const std::string& statement) {
        static const std::regex values("'(?:[^']|'')*'|\\b[0-9]+(?:\\.[0-9]+)?\\b");
        return std::regex_replace(statement, values, "?");
    }
    // Nobody has sent these.
    static bool IsOfTheConnection(const std::string& text) {
        return text == "begin immediate" || text == "commit" || text == "rollback" ||
               text == "Pragma data_version";
    }
    static std::string Lower(std::string text) {
        std::transform(text.begin(), text.end(), text.begin(),
                       [](char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); });
        return text;
    }
    static bool Holds(const std::string& text, const std::string& part) {
        return text.find(part) != std::string::npos;
    }

    static void Note(Kind& kind, std::size_t begin, std::size_t end) {
        bool isRun = false;
        for (std::size_t i = begin; i < end; ++i) {
            const EngineStatements::Run& run = EngineStatements::Runs()[i];
            if (!IsOfTheConnection(run.text)) {
                kind.engine = run.text;
                kind.isKept = kind.isKept || run.isKept;
                isRun = true;
            }
        }
        kind.isRemembered = kind.isRemembered || !isRun;
    }

    static std::string Told(const Kind& kind) {
        static const std::string guard = " and not (";
        std::string text = kind.name + ":";
        const bool isGuarded = Holds(kind.engine, " collate binary is ?");
        const std::string engine =
            kind.engine.substr(0, isGuarded ? kind.engine.find(guard) : std::string::npos);
        if (Holds(kind.engine, "].[")) {
            text += " rewritten";
        }
        if (kind.hasValues && Holds(kind.engine, "?")) {
            text += WithoutValues(engine) == engine ? " lifted" : " partly lifted";
        }
        text += kind.isKept ? " kept" : "";
        text += isGuarded ? " guarded" : "";
        text += Holds(Lower(kind.name), " order by ") && !Holds(Lower(kind.engine), " order by ") ? " ordered"
                                                                                                  : "";
        text += Holds(Lower(kind.engine), " limit ") ? " limited" : "";
        return text + (kind.isRemembered ? " remembered" : "");
    }

    std::vector<Sent> m_sent;
};

} // namespace quavernet::test
