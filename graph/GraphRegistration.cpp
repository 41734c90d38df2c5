#include "graph/GraphRegistration.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <mutex>

#include "graph/GraphText.h"

namespace {

constexpr mode_t kPrivateFolder = 0700;

struct Registration {
  GstBin* graph;  // the reference that keeps the graph alive while registered
  std::string path;
};

// The process's registrations by cookie, shared by every thread.
std::mutex g_RegistrationsLock;
std::map<uint32_t, Registration> g_Registrations;
uint32_t g_LastCookie = 0;

bool MakeFolder(const std::string& path) {
  return mkdir(path.c_str(), kPrivateFolder) == 0 || errno == EEXIST;
}

bool MakeFolders(const std::string& folder) {
  for (size_t cut = folder.find('/', 1); cut != std::string::npos;
       cut = folder.find('/', cut + 1)) {
    if (!MakeFolder(folder.substr(0, cut))) return false;
  }
  return MakeFolder(folder);
}

// Written beside and renamed, so a reader never sees half a text.
bool WriteWhole(const std::string& path, const std::string& text) {
  const std::string temporary = path + ".new";
  FILE* file = std::fopen(temporary.c_str(), "wb");
  if (!file) return false;
  bool ok = std::fwrite(text.data(), 1, text.size(), file) == text.size();
  ok = std::fclose(file) == 0 && ok;
  ok = ok && std::rename(temporary.c_str(), path.c_str()) == 0;
  if (!ok) std::remove(temporary.c_str());
  return ok;
}

}  // namespace

std::string GraphRegistrationName(const void* graph, uint32_t processId) {
  // Viewers look for exactly eight digits each: a 64-bit address gives its
  // low 32 bits. Two live graphs that share them share one file.
  char name[64];
  std::snprintf(name, sizeof(name), "FilterGraph %08" PRIx32 " pid %08" PRIx32,
                static_cast<uint32_t>(reinterpret_cast<uintptr_t>(graph)), processId);
  return name;
}

std::string GraphRegistrationFolder() {
  const char* runtime = std::getenv("XDG_RUNTIME_DIR");
  if (runtime && *runtime == '/') return std::string(runtime) + "/tachyrun/graphs";
  return "/tmp/tachyrun-" + std::to_string(getuid()) + "/graphs";
}

HRESULT AddGraphToRot(GstBin* graph, uint32_t* cookie) {
  if (!graph || !cookie) return E_POINTER;
  const std::string folder = GraphRegistrationFolder();
  if (!MakeFolders(folder)) return E_FAIL;
  std::string text;
  // A graph that has no text form is still registered, with an empty text.
  if (!WriteGraphText(graph, &text)) text.clear();
  const std::string path =
      folder + "/" + GraphRegistrationName(graph, static_cast<uint32_t>(getpid()));
  // The file changes under the lock, so a revoke never races a register.
  std::lock_guard<std::mutex> hold(g_RegistrationsLock);
  if (!WriteWhole(path, text)) return E_FAIL;
  do {
    ++g_LastCookie;
  } while (g_LastCookie == 0 || g_Registrations.count(g_LastCookie));
  g_Registrations[g_LastCookie] = Registration{GST_BIN(gst_object_ref(graph)), path};
  *cookie = g_LastCookie;
  return S_OK;
}

void RemoveGraphFromRot(uint32_t cookie) {
  Registration registration{};
  {
    std::lock_guard<std::mutex> hold(g_RegistrationsLock);
    auto found = g_Registrations.find(cookie);
    if (found == g_Registrations.end()) return;
    registration = found->second;
    g_Registrations.erase(found);
    // A graph registered twice has one file, kept while either stands.
    const bool shared = std::any_of(
        g_Registrations.begin(), g_Registrations.end(),
        [&registration](const auto& other) { return other.second.path == registration.path; });
    if (!shared) std::remove(registration.path.c_str());
  }
  gst_object_unref(registration.graph);
}
