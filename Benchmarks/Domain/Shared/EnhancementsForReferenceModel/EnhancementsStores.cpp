// The same addition by databases: a row or an entry more. Like ours it is on the disk once that was committed, but for
// SQLite's WAL-NORMAL.

#include "Domain/Shared/EnhancementsForReferenceModel/SampleRecords.h"
#include "Support/TemporaryDirectory.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <leveldb/db.h>
#include <leveldb/write_batch.h>
#include <lmdb.h>
#include <memory>
#include <span>
#include <sqlite3.h>
#include <string>
#include <vector>

namespace {

using namespace orv::domain::shared::enhancementsforreferencemodel;
using orv::tests::TemporaryDirectory;

using Marks = std::span<const std::unique_ptr<EnhancementBase>>;

std::vector<std::string> textsOf(EnhancementBase& record) {
    std::vector<std::string> texts{record.ownerId.toString(false)};
    for (const auto& [name, value] : record.getAttributes()) {
        texts.push_back(textOf(value));
    }
    return texts;
}

/// A row for each record.
class Sqlite {
public:
    Sqlite(const TemporaryDirectory& directory, const char* pragmas) {
        sqlite3_open((directory / "store.sqlite").c_str(), &database);
        execute(pragmas);
        execute("CREATE TABLE Mark (OwnerId TEXT, Number INTEGER, Visible INTEGER, Label TEXT, Remark TEXT)");
        sqlite3_prepare_v2(database, "INSERT INTO Mark VALUES (?, ?, ?, ?, ?)", -1, &insert, nullptr);
    }
    Sqlite(const Sqlite&) = delete;
    Sqlite& operator=(const Sqlite&) = delete;

    ~Sqlite() {
        sqlite3_finalize(insert);
        sqlite3_close(database);
    }

    bool add(Marks records) {
        bool isAdded = execute("BEGIN");
        for (const auto& record : records) {
            int column = 1;
            for (const std::string& text : textsOf(*record)) {
                sqlite3_bind_text(insert, column++, text.c_str(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
            }
            isAdded = sqlite3_step(insert) == SQLITE_DONE && isAdded;
            sqlite3_reset(insert);
        }
        return execute("COMMIT") && isAdded;
    }

private:
    bool execute(const char* statement) {
        return sqlite3_exec(database, statement, nullptr, nullptr, nullptr) == SQLITE_OK;
    }

    sqlite3* database = nullptr;
    sqlite3_stmt* insert = nullptr;
};

/// What a store of keys and values keeps of a record.
std::string valueOf(EnhancementBase& record) {
    std::string value;
    for (const std::string& text : textsOf(record)) {
        value += text;
        value += '\0';
    }
    return value;
}

/// An entry for each record; its key is its number.
class Lmdb {
public:
    explicit Lmdb(const TemporaryDirectory& directory) {
        constexpr std::size_t mapSize = std::size_t{1} << 30U;
        mdb_env_create(&environment);
        mdb_env_set_mapsize(environment, mapSize);
        mdb_env_open(environment, (directory / "store.lmdb").c_str(), MDB_NOSUBDIR, 0600);
    }
    Lmdb(const Lmdb&) = delete;
    Lmdb& operator=(const Lmdb&) = delete;

    ~Lmdb() { mdb_env_close(environment); }

    bool add(Marks records) {
        MDB_txn* transaction = nullptr;
        MDB_dbi table = 0;
        bool isAdded = mdb_txn_begin(environment, nullptr, 0, &transaction) == 0 &&
                       mdb_dbi_open(transaction, nullptr, MDB_INTEGERKEY | MDB_CREATE, &table) == 0;
        for (const auto& record : records) {
            std::string value = valueOf(*record);
            MDB_val key{sizeof count, &count};
            MDB_val data{value.size(), value.data()};
            isAdded = isAdded && mdb_put(transaction, table, &key, &data, MDB_APPEND) == 0;
            ++count;
        }
        return isAdded && mdb_txn_commit(transaction) == 0;
    }

private:
    MDB_env* environment = nullptr;
    std::uint64_t count = 0;
};

/// The same.
class LevelDb {
public:
    explicit LevelDb(const TemporaryDirectory& directory) {
        leveldb::Options options;
        options.create_if_missing = true;
        leveldb::DB* opened = nullptr;
        leveldb::DB::Open(options, directory / "store.leveldb", &opened);
        database.reset(opened);
    }

    bool add(Marks records) {
        leveldb::WriteBatch batch;
        for (const auto& record : records) {
            batch.Put(std::to_string(count++), valueOf(*record));
        }
        leveldb::WriteOptions durable;
        durable.sync = true;
        return database->Write(durable, &batch).ok();
    }

private:
    std::unique_ptr<leveldb::DB> database;
    std::uint64_t count = 0;
};

/// Times one record more, and its commit, in a store that has the others.
template <typename Store, typename... Options>
void addTo(benchmark::State& state, Options... options) {
    const TemporaryDirectory directory;
    Store store(directory, options...);
    const Records records = makeMarks(state.range());
    bool isAdded = store.add(records);
    for ([[maybe_unused]] const auto iteration : state) {
        const auto start = Clock::now();
        isAdded = store.add(Marks(records).first(1)) && isAdded;
        state.SetIterationTime(Seconds(Clock::now() - start).count());
    }
    if (!isAdded) {
        state.SkipWithError("a record isn't added");
    }
}

void addToSqlite(benchmark::State& state, const char* pragmas) {
    addTo<Sqlite>(state, pragmas);
}

BENCHMARK_CAPTURE(addToSqlite, full, "PRAGMA synchronous=FULL")->Name("addRecord/SQLite-FULL")->Apply(eachSize);
BENCHMARK_CAPTURE(addToSqlite, normal, "PRAGMA synchronous=NORMAL")->Name("addRecord/SQLite-NORMAL")->Apply(eachSize);
BENCHMARK_CAPTURE(addToSqlite, walFull, "PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL")
    ->Name("addRecord/SQLite-WAL-FULL")
    ->Apply(eachSize);
BENCHMARK_CAPTURE(addToSqlite, wal, "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL")
    ->Name("addRecord/SQLite-WAL-NORMAL")
    ->Apply(eachSize);
BENCHMARK(addTo<Lmdb>)->Name("addRecord/LMDB")->Apply(eachSize);
BENCHMARK(addTo<LevelDb>)->Name("addRecord/LevelDB")->Apply(eachSize);

} // namespace
