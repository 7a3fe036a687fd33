// How many pages of the library the engine keeps in memory. Told by the connection what it is about to do.
#pragma once

struct sqlite3;

namespace quavernet::sqlite {

/// Few for reading: a list reads most pages once, and the system keeps them as well. Many for writing, which
/// comes back to the pages of every index. A failure changes no result and is passed over.
class PageMemory {
public:
    /// Begins with few.
    void Attach(sqlite3* database);

    void KeepFew() { Keep(FewKilobytes); }
    void KeepMany() { Keep(ManyKilobytes); }

private:
    static constexpr int FewKilobytes = 4096;
    static constexpr int ManyKilobytes = 16384;

    void Keep(int kilobytes);

    sqlite3* m_database = nullptr;
    int m_kilobytes = 0;
};

} // namespace quavernet::sqlite
