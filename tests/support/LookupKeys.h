// Lookup tables that each go on from another key, so that a store which takes one key for another is seen.
// Both stores of the scan are tested with them.
#pragma once

#include "support/TestLibrary.h"

namespace quavernet::test {

/// The next new title gets the key 101, performer 201, drive 301, quality 401, album 501.
inline void SpreadLookupKeys() {
    for (const char* statement : {"Insert into Titel (Title_id, Name) values (100, 'x')",
                                  "Insert into Interpret (Inter_id, Interpret) values (200, 'x')",
                                  "Insert into Drive (Drive_id, Drive) values (300, 'x')",
                                  "Insert into Quality (Quality_id, Quality) values (400, 1)",
                                  "Insert into Albums (Album_id, Name) values (500, 'x')"}) {
        mainModule.Connection->Execute(statement);
    }
}

/// The five keys of each row of Files, in that order, joined by "|".
inline std::vector<std::string> KeysOfFiles() {
    return RowTextsOf(*mainModule.Connection,
                      "Select Title_id, Inter_id, Drive_id, Quality_id, Album_id from Files");
}

/// The texts under the five new keys, joined by "|".
inline std::vector<std::string> TextsOfNewKeys() {
    return RowTextsOf(
        *mainModule.Connection,
        "Select T.Name, I.Interpret, D.Drive, Q.Quality, A.Name from Titel T, Interpret I, Drive "
        "D, Quality Q, Albums A where T.Title_id = 101 and I.Inter_id = 201 and D.Drive_id = 301 "
        "and Q.Quality_id = 401 and A.Album_id = 501");
}

} // namespace quavernet::test
