// How the engine walks through what a query reads: whether the rows come by key, and whether they are sorted
// for that.
#pragma once

#include "support/StatementRoad.h"
#include "support/TestLibrary.h"

#include "adapters/sqlite/KeyOrder.h"
#include "adapters/sqlite/OrderClause.h"

#include <algorithm>
#include <regex>
#include <string>
#include <vector>

namespace quavernet::test {

/// The queries that the program has sent without an order, each kind once; those whose order the engine is
/// not given are among them.
inline std::vector<std::string> QueriesWithoutOrder(const StatementRoad& road) {
    static const std::regex hasNoOrder("Select (?!Count|Max|Sum)(?!.* Order By ).*", std::regex::icase);
    std::vector<std::string> queries;
    for (const std::string& statement : road.FirstOfEachKind()) {
        const auto taken = sqlite::TakeOrderClause(statement);
        const std::string sent(taken ? taken->unordered : statement);
        if (std::regex_match(sent, hasNoOrder)) {
            queries.push_back(sent);
        }
    }
    return queries;
}

/// The steps of the engine's plan for a query as the connection prepares it.
inline std::vector<std::string> PlanOf(ADODB::Connection& connection, const std::string& query) {
    std::vector<std::string> steps;
    for (const std::string& line :
         RowTextsOf(connection, "explain query plan " + sqlite::InKeyOrder(query))) {
        steps.push_back(line.substr(line.rfind('|') + 1));
    }
    return steps;
}

/// Whether the rows are sorted when they have been read.
inline bool Sorts(ADODB::Connection& connection, const std::string& query) {
    const std::vector<std::string> plan = PlanOf(connection, query);
    return std::find(plan.begin(), plan.end(), "USE TEMP B-TREE FOR ORDER BY") != plan.end();
}

/// Whether what a query reads comes, without a sort, by the key of its first table: the table itself is
/// walked or asked by key, or an index of which every column is given; and each further table is asked by its
/// key.
inline bool ComesByKey(ADODB::Connection& connection, const std::string& query) {
    static const std::regex walk("SCAN [A-Za-z]+");
    static const std::regex byKey("SEARCH [A-Za-z]+ USING INTEGER PRIMARY KEY \\(rowid=\\?\\)");
    static const std::regex byIndex("SEARCH [A-Za-z]+ USING (?:COVERING )?INDEX ([A-Za-z]+) \\((.*)\\)");
    bool isFirst = true;
    for (const std::string& step : PlanOf(connection, query)) {
        std::smatch found;
        const bool isWhole = std::regex_match(step, found, byIndex) &&
                             RowTextsOf(connection, "pragma index_info(" + found[1].str() + ")").size() ==
                                 static_cast<std::size_t>(std::count(found[2].first, found[2].second, '=')) &&
                             found[2].str().find_first_of("<>") == std::string::npos;
        if (!std::regex_match(step, byKey) && !(isFirst && (isWhole || std::regex_match(step, walk)))) {
            return false;
        }
        isFirst = false;
    }
    return true;
}

} // namespace quavernet::test
