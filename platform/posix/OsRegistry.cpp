// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// Registry keys and typed values kept in SQLite databases, one per root:
// HKEY_CURRENT_USER in the user's configuration folder, HKEY_LOCAL_MACHINE in
// a machine-wide store that only an administrator can write. Every write is
// one short IMMEDIATE transaction, so concurrent processes never lose an
// update and never see half a value; readers in WAL mode never block.
#include "OsRegistry.h"

#include <sqlite3.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Boundary.h"
#include "Directories.h"

namespace kutil::platform {
namespace {

constexpr uintptr_t kRootBase = 0x80000000u;
constexpr long kRegKeyDeleted = 1018;  // ERROR_KEY_DELETED

HKEY rootHandle(uintptr_t offset) { return reinterpret_cast<HKEY>(kRootBase + offset); }

bool isRoot(HKEY key) {
  const uintptr_t v = reinterpret_cast<uintptr_t>(key);
  return v >= kRootBase && v <= kRootBase + 6;
}

struct Store {
  std::string file;  // database file
  std::string dir;   // its folder, created on demand
  bool wal = true;   // WAL for stores the user owns
};

std::string envOr(const char* name, const std::string& fallback) {
  const char* v = std::getenv(name);
  return (v && *v) ? std::string(v) : fallback;
}

// Only the two roots the library uses have stores; the others open nothing.
bool storeFor(HKEY root, Store* out) {
  const uintptr_t v = reinterpret_cast<uintptr_t>(root);
  const bool user = v == reinterpret_cast<uintptr_t>(rootCurrentUser());
  const bool machine = v == reinterpret_cast<uintptr_t>(rootLocalMachine());
  if (!user && !machine) return false;
  const char* override = std::getenv("KUTIL_REGISTRY_DIR");
  if (override && *override) {
    out->dir = override;
    out->file = out->dir + (user ? "/user.db" : "/machine.db");
    out->wal = true;
    return true;
  }
  if (user) {
    const std::string home = envOr("HOME", "/tmp");
    out->dir = envOr("XDG_CONFIG_HOME", home + "/.config") + "/kaldo3d";
    out->file = out->dir + "/registry.db";
    out->wal = true;
  } else {
    // Rollback journal here: a reader without write access to the folder
    // cannot create the shared-memory file that WAL needs.
    out->dir = "/var/lib/kaldo3d";
    out->file = out->dir + "/registry.db";
    out->wal = false;
  }
  return true;
}

// A store connection, closed with its owner: a call that fails half way
// (out of memory included) leaves no connection, and so no transaction, open.
struct CloseDatabase {
  void operator()(sqlite3* db) const { sqlite3_close(db); }
};
using Database = std::unique_ptr<sqlite3, CloseDatabase>;

struct Handle {
  Store store;
  std::string path;  // components joined by '\', "" for the root itself
  Database db;
  bool writable = false;
};

std::map<uintptr_t, Handle> g_open;
// Closed handle values are never reused and keep naming their key for a
// while, so a delete issued relative to a just-closed handle still reaches it.
std::deque<std::pair<uintptr_t, Handle>> g_closed;
uintptr_t g_nextHandle = 1;
constexpr size_t kClosedKept = 64;

std::string joinPath(const std::string& base, const char* sub) {
  std::vector<std::string> parts;
  auto split = [&parts](const std::string& s) {
    std::string cur;
    for (char c : s) {
      if (c == '\\') {
        if (!cur.empty()) parts.push_back(cur);
        cur.clear();
      } else {
        cur += c;
      }
    }
    if (!cur.empty()) parts.push_back(cur);
  };
  split(base);
  if (sub) split(sub);
  std::string out;
  for (const auto& p : parts) {
    if (!out.empty()) out += '\\';
    out += p;
  }
  return out;
}

// The length of the parent of the key path's first length characters: up to
// its last separator, 0 at the top. *leaf is where the last component starts.
std::size_t parentLength(const std::string& path, std::size_t length, std::size_t* leaf) {
  const std::size_t cut = path.rfind('\\', length - 1);
  *leaf = cut == std::string::npos ? 0 : cut + 1;
  return cut == std::string::npos ? 0 : cut;
}

// Where parent + sub leads: the store and the full key path.
long resolve(HKEY parent, const char* sub, Store* store, std::string* path) {
  if (isRoot(parent)) {
    if (!storeFor(parent, store)) return kRegNotFound;
    *path = joinPath("", sub);
    return kRegOk;
  }
  const uintptr_t v = reinterpret_cast<uintptr_t>(parent);
  auto it = g_open.find(v);
  if (it != g_open.end()) {
    *store = it->second.store;
    *path = joinPath(it->second.path, sub);
    return kRegOk;
  }
  for (const auto& c : g_closed) {
    if (c.first == v) {
      *store = c.second.store;
      *path = joinPath(c.second.path, sub);
      return kRegOk;
    }
  }
  return kRegBadHandle;
}

bool exec(sqlite3* db, const char* sql) {
  return sqlite3_exec(db, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
}

class Statement {
 public:
  Statement(sqlite3* db, const char* sql) {
    if (sqlite3_prepare_v2(db, sql, -1, &m_stmt, nullptr) != SQLITE_OK) m_stmt = nullptr;
  }
  ~Statement() { sqlite3_finalize(m_stmt); }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;
  bool ok() const { return m_stmt != nullptr; }
  void text(int i, const char* s, std::size_t length) {
    sqlite3_bind_text(m_stmt, i, s, static_cast<int>(length), SQLITE_TRANSIENT);
  }
  void text(int i, const std::string& s) { text(i, s.c_str(), s.size()); }
  void text(int i, const char* s) { text(i, s, std::strlen(s)); }
  void integer(int i, sqlite3_int64 n) { sqlite3_bind_int64(m_stmt, i, n); }
  void blob(int i, const void* p, int n) { sqlite3_bind_blob(m_stmt, i, p ? p : "", n, SQLITE_TRANSIENT); }
  int step() { return sqlite3_step(m_stmt); }
  sqlite3_stmt* get() { return m_stmt; }

 private:
  sqlite3_stmt* m_stmt = nullptr;
};

// Opens (and with create, initialises) a store; nullptr on failure.
Database openStore(const Store& store, bool write, bool create) {
  if (create && !makeDirectories(store.dir)) return nullptr;
  int flags = write ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY;
  if (create) flags |= SQLITE_OPEN_CREATE;
  sqlite3* opened = nullptr;
  const int rc = sqlite3_open_v2(store.file.c_str(), &opened, flags | SQLITE_OPEN_NOMUTEX, nullptr);
  Database db(opened);
  if (rc != SQLITE_OK) return nullptr;
  // SQLite quietly falls back to reading a file it may not write; a key
  // opened for writing must fail at once instead, as the registry does.
  if (write && sqlite3_db_readonly(db.get(), "main") == 1) return nullptr;
  sqlite3_busy_timeout(db.get(), 15000);
  if (create) {
    // Several processes may create the store at once; the journal switch is
    // retried because it cannot wait on the busy handler.
    bool ready = false;
    for (int attempt = 0; attempt < 200 && !ready; ++attempt) {
      ready = exec(db.get(), store.wal ? "PRAGMA journal_mode=WAL" : "PRAGMA journal_mode=DELETE") &&
              exec(db.get(),
                   "BEGIN IMMEDIATE;"
                   "CREATE TABLE IF NOT EXISTS keys(path TEXT PRIMARY KEY COLLATE NOCASE,"
                   " parent TEXT NOT NULL COLLATE NOCASE, name TEXT NOT NULL);"
                   "CREATE INDEX IF NOT EXISTS keys_parent ON keys(parent);"
                   "CREATE TABLE IF NOT EXISTS vals(key TEXT NOT NULL COLLATE NOCASE,"
                   " name TEXT NOT NULL COLLATE NOCASE, type INTEGER NOT NULL, data BLOB,"
                   " PRIMARY KEY(key, name));"
                   "COMMIT;");
      if (!ready) {
        exec(db.get(), "ROLLBACK");
        ::usleep(5000);
      }
    }
    if (!ready) return nullptr;
  }
  exec(db.get(), "PRAGMA synchronous=FULL");
  return db;
}

bool keyExists(sqlite3* db, const std::string& path, bool* exists) {
  if (path.empty()) {
    *exists = true;
    return true;
  }
  Statement q(db, "SELECT 1 FROM keys WHERE path = ?1");
  if (!q.ok()) return false;
  q.text(1, path);
  const int rc = q.step();
  *exists = rc == SQLITE_ROW;
  return rc == SQLITE_ROW || rc == SQLITE_DONE;
}

HKEY registerHandle(Handle h) {
  const uintptr_t id = g_nextHandle++;
  g_open.emplace(id, std::move(h));
  return reinterpret_cast<HKEY>(id);
}

Handle* openHandle(HKEY key) {
  auto it = g_open.find(reinterpret_cast<uintptr_t>(key));
  return it == g_open.end() ? nullptr : &it->second;
}

}  // namespace

HKEY rootClassesRoot() { return rootHandle(0); }
HKEY rootCurrentUser() { return rootHandle(1); }
HKEY rootLocalMachine() { return rootHandle(2); }
HKEY rootUsers() { return rootHandle(3); }
HKEY rootPerformanceData() { return rootHandle(4); }
HKEY rootCurrentConfig() { return rootHandle(5); }
HKEY rootDynData() { return rootHandle(6); }

// The calls below that build key paths or handle tables run through guarded:
// out of memory they report ERROR_OUTOFMEMORY, with no connection left open.
// Those that only bind what a handle already holds allocate nothing of ours.

long regOpenKey(HKEY parent, const char* path, bool forWriting, HKEY* out) {
  if (!out) return kRegBadParameter;
  return kutil::detail::guarded(
      [&] {
        Handle h;
        const long rc = resolve(parent, path, &h.store, &h.path);
        if (rc != kRegOk) return rc;
        if (::access(h.store.file.c_str(), F_OK) != 0) return kRegNotFound;
        h.db = openStore(h.store, forWriting, false);
        if (!h.db) return forWriting ? kRegAccessDenied : kRegNotFound;
        bool exists = false;
        if (!keyExists(h.db.get(), h.path, &exists) || !exists) return kRegNotFound;
        h.writable = forWriting;
        *out = registerHandle(std::move(h));
        return kRegOk;
      },
      kRegOutOfMemory);
}

// Inserts the key at path and every missing key above it, in one transaction.
bool insertKeyChain(sqlite3* db, const std::string& path) {
  if (!exec(db, "BEGIN IMMEDIATE")) return false;
  bool ok = true;
  std::size_t leaf = 0;
  for (std::size_t length = path.size(); ok && length != 0; length = parentLength(path, length, &leaf)) {
    Statement ins(db, "INSERT OR IGNORE INTO keys(path, parent, name) VALUES(?1, ?2, ?3)");
    ok = ins.ok();
    if (!ok) break;
    ins.text(1, path.c_str(), length);
    ins.text(2, path.c_str(), parentLength(path, length, &leaf));
    ins.text(3, path.c_str() + leaf, length - leaf);
    ok = ins.step() == SQLITE_DONE;
  }
  if (ok) ok = exec(db, "COMMIT");
  if (!ok) exec(db, "ROLLBACK");
  return ok;
}

long regCreateKey(HKEY parent, const char* path, HKEY* out) {
  if (!out) return kRegBadParameter;
  return kutil::detail::guarded(
      [&] {
        Handle h;
        const long rc = resolve(parent, path, &h.store, &h.path);
        if (rc != kRegOk) return rc;
        h.db = openStore(h.store, true, true);
        if (!h.db || !insertKeyChain(h.db.get(), h.path)) return kRegAccessDenied;
        h.writable = true;
        *out = registerHandle(std::move(h));
        return kRegOk;
      },
      kRegOutOfMemory);
}

long regQueryValue(HKEY key, const char* name, unsigned long* type, unsigned char* data,
                   unsigned long* size) {
  Handle* h = openHandle(key);
  if (!h) return isRoot(key) ? kRegNotFound : kRegBadHandle;
  if (data && !size) return kRegBadParameter;
  Statement q(h->db.get(), "SELECT type, data FROM vals WHERE key = ?1 AND name = ?2");
  if (!q.ok()) return kRegNotFound;
  q.text(1, h->path);
  q.text(2, name ? name : "");
  if (q.step() != SQLITE_ROW) return kRegNotFound;
  const unsigned long valueType = static_cast<unsigned long>(sqlite3_column_int64(q.get(), 0));
  const void* bytes = sqlite3_column_blob(q.get(), 1);
  const unsigned long length = static_cast<unsigned long>(sqlite3_column_bytes(q.get(), 1));
  if (type) *type = valueType;
  if (!size) return kRegOk;
  if (!data) {
    *size = length;
    return kRegOk;
  }
  if (*size < length) {
    *size = length;
    return kRegMoreData;
  }
  if (length) std::memcpy(data, bytes, length);
  *size = length;
  return kRegOk;
}

long regSetValue(HKEY key, const char* name, unsigned long type, const unsigned char* data,
                 unsigned long size) {
  Handle* h = openHandle(key);
  if (!h) return isRoot(key) ? kRegAccessDenied : kRegBadHandle;
  if (!h->writable) return kRegAccessDenied;
  if (!data && size) return kRegBadParameter;
  sqlite3* db = h->db.get();
  if (!exec(db, "BEGIN IMMEDIATE")) return kRegBusy;
  bool exists = false;
  if (!keyExists(db, h->path, &exists) || !exists) {
    exec(db, "ROLLBACK");
    return kRegKeyDeleted;
  }
  Statement ins(db, "INSERT OR REPLACE INTO vals(key, name, type, data) VALUES(?1, ?2, ?3, ?4)");
  bool ok = ins.ok();
  if (ok) {
    ins.text(1, h->path);
    ins.text(2, name ? name : "");
    ins.integer(3, static_cast<sqlite3_int64>(type));
    ins.blob(4, data, static_cast<int>(size));
    ok = ins.step() == SQLITE_DONE;
  }
  if (ok) ok = exec(db, "COMMIT");
  if (!ok) {
    exec(db, "ROLLBACK");
    return kRegAccessDenied;
  }
  return kRegOk;
}

long regFlushKey(HKEY key) {
  // Every change is committed durably (synchronous=FULL) when it is made.
  if (isRoot(key)) return kRegOk;
  return openHandle(key) ? kRegOk : kRegBadHandle;
}

long regEnumKey(HKEY key, unsigned long index, char* name, unsigned long* size) {
  Handle* h = openHandle(key);
  if (!h) return isRoot(key) ? kRegNoMoreItems : kRegBadHandle;
  if (!name || !size) return kRegBadParameter;
  Statement q(h->db.get(),
              "SELECT name FROM keys WHERE parent = ?1 ORDER BY name COLLATE NOCASE LIMIT 1 OFFSET ?2");
  if (!q.ok()) return kRegNoMoreItems;
  q.text(1, h->path);
  q.integer(2, static_cast<sqlite3_int64>(index));
  if (q.step() != SQLITE_ROW) return kRegNoMoreItems;
  const char* leaf = reinterpret_cast<const char*>(sqlite3_column_text(q.get(), 0));
  const unsigned long length = leaf ? static_cast<unsigned long>(std::strlen(leaf)) : 0;
  if (length + 1 > *size) return kRegMoreData;
  if (length) std::memcpy(name, leaf, length);
  name[length] = '\0';
  *size = length;
  return kRegOk;
}

// Deletes the key at path if it has no sub-keys, with its values, in one transaction.
long deleteEmptyKey(sqlite3* db, const std::string& path) {
  if (!exec(db, "BEGIN IMMEDIATE")) return kRegBusy;
  long result = kRegOk;
  bool exists = false;
  if (!keyExists(db, path, &exists)) {
    result = kRegAccessDenied;
  } else if (!exists) {
    result = kRegNotFound;
  } else {
    Statement kids(db, "SELECT 1 FROM keys WHERE parent = ?1 LIMIT 1");
    if (!kids.ok()) {
      result = kRegAccessDenied;
    } else {
      kids.text(1, path);
      if (kids.step() != SQLITE_DONE) result = kRegAccessDenied;  // only empty keys go
    }
  }
  if (result == kRegOk) {
    Statement delVals(db, "DELETE FROM vals WHERE key = ?1");
    Statement delKey(db, "DELETE FROM keys WHERE path = ?1");
    if (delVals.ok() && delKey.ok()) {
      delVals.text(1, path);
      delKey.text(1, path);
      if (delVals.step() != SQLITE_DONE || delKey.step() != SQLITE_DONE) result = kRegAccessDenied;
    } else {
      result = kRegAccessDenied;
    }
  }
  if (result == kRegOk && !exec(db, "COMMIT")) result = kRegAccessDenied;
  if (result != kRegOk) exec(db, "ROLLBACK");
  return result;
}

long regDeleteKey(HKEY parent, const char* subKey) {
  if (!subKey || !*subKey) return kRegBadParameter;
  return kutil::detail::guarded(
      [&] {
        Store store;
        std::string path;
        const long rc = resolve(parent, subKey, &store, &path);
        if (rc != kRegOk) return rc;
        if (path.empty()) return kRegAccessDenied;
        if (::access(store.file.c_str(), F_OK) != 0) return kRegNotFound;
        const Database db = openStore(store, true, false);
        if (!db) return kRegAccessDenied;
        return deleteEmptyKey(db.get(), path);
      },
      kRegOutOfMemory);
}

long regCloseKey(HKEY key) {
  if (isRoot(key)) return kRegOk;
  auto it = g_open.find(reinterpret_cast<uintptr_t>(key));
  if (it == g_open.end()) return kRegBadHandle;
  it->second.db.reset();
  // Remembering the closed handle needs memory; without it the handle is
  // simply forgotten, and a delete relative to it is refused as unknown.
  kutil::detail::guarded([&] {
    g_closed.emplace_back(it->first, std::move(it->second));
    if (g_closed.size() > kClosedKept) g_closed.pop_front();
    return 1;
  });
  g_open.erase(it);
  return kRegOk;
}

}  // namespace kutil::platform
