// A library of its own for one test: a copy of the template that ships with the program, opened through the
// real engine.
#pragma once

#include "support/LogicTest.h"
#include "support/RecordingConnection.h"
#include "support/TemplatePath.h"
#include "support/TemporaryFolder.h"

#include "adapters/sqlite/SqliteConnection.h"
#include "app/MainModule.h"

#include <chrono>
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quavernet::test {

inline constexpr const char* ConnectionStart = "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=";

/// Copies the template, with its seed rows and nothing else, to a path.
inline void CopyTemplate(const std::string& path) {
    std::filesystem::copy_file(TemplatePath(), path);
}

/// Every query of it reads the library as it is: a test asks more than once in the same millisecond.
inline std::unique_ptr<ADODB::Connection>
CreateConnection(const RegionalSettings& regional,
                 std::chrono::milliseconds longestGathering = std::chrono::milliseconds(200)) {
    return CreateSqliteConnection(regional, longestGathering, std::chrono::milliseconds(0));
}

inline std::unique_ptr<ADODB::Connection> OpenLibrary(const std::string& path,
                                                      const RegionalSettings& regional = {}) {
    auto connection = CreateConnection(regional);
    connection->Open(ConnectionStart + path);
    return connection;
}

/// The rows of a query as texts, the fields of a row joined by "|".
inline std::vector<std::string> RowTextsOf(ADODB::Connection& connection, const std::string& statement) {
    const ADODB::RowBlock rows = connection.Query(statement);
    std::vector<std::string> texts;
    for (std::size_t row = 0; row < rows.Rows(); ++row) {
        std::string text;
        for (std::size_t column = 0; column < rows.Columns(); ++column) {
            text += (column == 0 ? "" : "|") + rows.At(row, column).Text();
        }
        texts.push_back(text);
    }
    return texts;
}

/// Base of tests that need a library: mainModule.Connection is open on a fresh one.
class LibraryTest : public LogicTest {
protected:
    LibraryTest() {
        CopyTemplate(libraryPath);
        mainModule.Connection = OpenLibrary(libraryPath, services.regional);
        services.createConnection = [] { return CreateConnection(services.regional); };
    }
    ~LibraryTest() override { mainModule.Connection.reset(); }

    /// Puts a RecordingConnection around the open library, for the rest of the test.
    RecordingConnection& Record() { return RecordingConnection::Install(); }
    ADODB::Connection& Connection() { return *mainModule.Connection; }
    void Execute(const std::string& statement) { Connection().Execute(statement); }
    void Execute(std::initializer_list<const char*> statements) {
        for (const char* statement : statements) {
            Connection().Execute(statement);
        }
    }
    /// All rows of a query, see RowTextsOf.
    std::vector<std::string> Rows(const std::string& statement) {
        return RowTextsOf(Connection(), statement);
    }
    /// Field 0 of the first row, or "no row".
    std::string Value(const std::string& statement) {
        const ADODB::RowBlock rows = Connection().Query(statement);
        return rows.Rows() == 0 ? "no row" : rows.At(0, 0).Text();
    }
    long Count(const std::string& statement) {
        return static_cast<long>(Connection().Query(statement).Rows());
    }

    TemporaryFolder libraryFolder;
    std::string libraryPath = libraryFolder / "Quavernet.db";
};

} // namespace quavernet::test
