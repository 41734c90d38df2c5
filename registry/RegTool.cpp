// tachyrun-reg: look into and edit the registry store from a shell, the
// basics of a registry editor: list a key, read, write and delete values,
// delete a key tree.

#include <cctype>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "registry/RegDatabase.h"
#include "registry/RegStore.h"

namespace {

constexpr int kOk = 0;
constexpr int kFailed = 1;
constexpr int kUsage = 2;

constexpr const char* kHelp =
    "Usage: tachyrun-reg [--store FILE] COMMAND ARGUMENTS\n"
    "\n"
    "Lists and edits the Tachyrun registry store.\n"
    "\n"
    "Commands:\n"
    "  list KEY                   sub-keys and values of KEY\n"
    "  get KEY NAME               type and content of one value\n"
    "  set-dword KEY NAME NUMBER  store a REG_DWORD (decimal, 0x hex, or negative)\n"
    "  set-string KEY NAME TEXT   store a REG_SZ\n"
    "  set-binary KEY NAME HEX    store a REG_BINARY given as hex digits, e.g. 00ff10\n"
    "  delete-value KEY NAME      remove one value\n"
    "  delete-key KEY             remove KEY and everything below it\n"
    "  path                       print the store file in use\n"
    "\n"
    "KEY starts with its root, HKCU (HKEY_CURRENT_USER) or HKLM (HKEY_LOCAL_MACHINE),\n"
    "followed by backslash-separated key names, e.g. 'HKLM\\Software\\GlobalCfgConfig'.\n"
    "Names compare without regard to case. Writes create missing keys.\n"
    "\n"
    "The store is FILE, else $TACHYRUN_REGISTRY, else\n"
    "$XDG_CONFIG_HOME/tachyrun/registry.sqlite3 (~/.config/tachyrun/registry.sqlite3).\n"
    "\n"
    "Exit status: 0 done, 1 not found or the store failed, 2 bad usage.\n";

// Each command with the number of words it takes, itself included.
constexpr std::pair<const char*, size_t> kCommands[] = {
    {"list", 2},      {"delete-key", 2}, {"get", 3},       {"delete-value", 3},
    {"set-dword", 4}, {"set-string", 4}, {"set-binary", 4}};

struct KeyArg {
  HKEY root = kNoRoot;
  std::string path;
};

int Fail(const std::string& message, int status = kFailed) {
  std::fprintf(stderr, "tachyrun-reg: %s\n", message.c_str());
  return status;
}

bool ParseKey(const std::string& text, KeyArg* key) {
  const size_t cut = text.find('\\');
  std::string root = text.substr(0, cut);
  for (char& c : root) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  if (root == "HKCU" || root == "HKEY_CURRENT_USER") {
    key->root = HKEY_CURRENT_USER;
  } else if (root == "HKLM" || root == "HKEY_LOCAL_MACHINE") {
    key->root = HKEY_LOCAL_MACHINE;
  } else {
    return false;
  }
  key->path = cut == std::string::npos ? std::string() : text.substr(cut + 1);
  return true;
}

bool ParseNumber(const std::string& text, uint32_t* value) {
  errno = 0;
  char* end = nullptr;
  const long long number = std::strtoll(text.c_str(), &end, 0);
  if (text.empty() || *end != '\0' || errno != 0 || number < INT32_MIN || number > UINT32_MAX) {
    return false;
  }
  *value = static_cast<uint32_t>(number);
  return true;
}

bool ParseHex(const std::string& text, std::vector<uint8_t>* bytes) {
  if (text.size() % 2 != 0) return false;
  for (size_t i = 0; i < text.size(); i += 2) {
    const std::string pair = text.substr(i, 2);
    if (!std::isxdigit(static_cast<unsigned char>(pair[0])) ||
        !std::isxdigit(static_cast<unsigned char>(pair[1]))) {
      return false;
    }
    bytes->push_back(static_cast<uint8_t>(std::strtoul(pair.c_str(), nullptr, 16)));
  }
  return true;
}

std::string FormatValue(const RegValue& value) {
  char line[64];
  if (value.type == REG_DWORD && value.data.size() == 4) {
    uint32_t number = 0;
    std::memcpy(&number, value.data.data(), 4);
    std::snprintf(line, sizeof line, "REG_DWORD 0x%08x (%u)", number, number);
    return line;
  }
  if (value.type == REG_SZ) {
    std::string text(value.data.begin(), value.data.end());
    text = text.substr(0, text.find('\0'));
    return "REG_SZ \"" + text + "\"";
  }
  std::string out = value.type == REG_BINARY ? "REG_BINARY" : "type " + std::to_string(value.type);
  out += " (" + std::to_string(value.data.size()) + " bytes)";
  for (const uint8_t byte : value.data) {
    std::snprintf(line, sizeof line, " %02x", byte);
    out += line;
  }
  return out;
}

// Opens the store for reading and finds the key, explaining what failed.
int OpenForRead(RegDatabase& db, const KeyArg& key, const std::string& keyText, int64_t* id) {
  if (!db.Open(RegDatabase::Mode::Read)) {
    return Fail("cannot read the store " + RegDatabase::StorePath());
  }
  *id = db.OpenKey(key.root, key.path);
  return *id < 0 ? Fail("key not found: " + keyText) : kOk;
}

int List(const KeyArg& key, const std::string& keyText) {
  RegDatabase db;
  int64_t id = -1;
  if (const int status = OpenForRead(db, key, keyText, &id); status != kOk) return status;
  std::vector<std::string> keys;
  std::vector<std::string> values;
  std::string keyClass;
  if (!db.ListSubKeys(id, &keys) || !db.ListValueNames(id, &values)) {
    return Fail("cannot read the store " + RegDatabase::StorePath());
  }
  db.QueryKeyClass(id, &keyClass);
  std::printf("[%s]", keyText.c_str());
  if (!keyClass.empty()) std::printf(" class \"%s\"", keyClass.c_str());
  std::printf("\n");
  for (const std::string& name : keys) std::printf("  %s\\\n", name.c_str());
  for (const std::string& name : values) {
    RegValue value;
    if (db.QueryValue(id, name, &value)) {
      std::printf("  %s = %s\n", name.c_str(), FormatValue(value).c_str());
    }
  }
  return kOk;
}

int Get(const KeyArg& key, const std::string& keyText, const std::string& name) {
  RegDatabase db;
  int64_t id = -1;
  if (const int status = OpenForRead(db, key, keyText, &id); status != kOk) return status;
  RegValue value;
  if (!db.QueryValue(id, name, &value)) return Fail("value not found: " + name);
  std::printf("%s\n", FormatValue(value).c_str());
  return kOk;
}

int DeleteValue(const KeyArg& key, const std::string& keyText, const std::string& name) {
  RegDatabase db;
  if (!db.Open(RegDatabase::Mode::Write)) {
    return Fail("cannot write the store " + RegDatabase::StorePath());
  }
  const int64_t id = db.OpenKey(key.root, key.path);
  if (id < 0) return Fail("key not found: " + keyText);
  if (!db.DeleteValue(id, name)) return Fail("value not found: " + name);
  return db.Commit() ? kOk : Fail("cannot write the store " + RegDatabase::StorePath());
}

int Written(int32_t result) {
  return result == 1 ? kOk : Fail("cannot write the store " + RegDatabase::StorePath());
}

int Set(const std::string& command, const KeyArg& key, const std::string& name,
        const std::string& text) {
  const CRegStore store;
  const std::string noBase;
  if (command == "set-string") {
    return Written(store.WriteString(key.path, name, text, &noBase, key.root));
  }
  if (command == "set-dword") {
    uint32_t number = 0;
    if (!ParseNumber(text, &number)) return Fail("not a 32-bit number: " + text, kUsage);
    return Written(store.WriteDword(key.path, name, number, &noBase, key.root));
  }
  std::vector<uint8_t> bytes;
  if (!ParseHex(text, &bytes)) return Fail("not hex bytes: " + text, kUsage);
  return Written(store.WriteBinary(key.path, name, bytes.data(),
                                   static_cast<uint32_t>(bytes.size()), &noBase, key.root));
}

int Run(const std::vector<std::string>& args) {
  const std::string& command = args[0];
  if (command == "path") {
    std::printf("%s\n", RegDatabase::StorePath().c_str());
    return kOk;
  }
  size_t wanted = 0;
  for (const auto& [name, count] : kCommands) {
    if (command == name) wanted = count;
  }
  if (wanted == 0) return Fail("unknown command '" + command + "' (see --help)", kUsage);
  if (args.size() != wanted) return Fail("wrong number of arguments for " + command, kUsage);
  KeyArg key;
  if (!ParseKey(args[1], &key)) return Fail("key must start with HKCU or HKLM: " + args[1], kUsage);
  if (command == "list") return List(key, args[1]);
  if (command == "get") return Get(key, args[1], args[2]);
  if (command == "delete-value") return DeleteValue(key, args[1], args[2]);
  if (command == "delete-key") {
    if (key.path.empty()) return Fail("a root can't be deleted", kUsage);
    return CRegStore().DeleteKeyTree(key.root, key.path) == 1
               ? kOk
               : Fail("cannot delete " + args[1] + " (missing, or the store failed)");
  }
  return Set(command, key, args[2], args[3]);
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> args(argv + 1, argv + argc);
  if (!args.empty() && (args[0] == "--help" || args[0] == "-h")) {
    std::fputs(kHelp, stdout);
    return kOk;
  }
  if (args.size() >= 2 && args[0] == "--store") {
    setenv("TACHYRUN_REGISTRY", args[1].c_str(), 1);
    args.erase(args.begin(), args.begin() + 2);
  }
  if (args.empty()) {
    std::fputs(kHelp, stderr);
    return kUsage;
  }
  return Run(args);
}
