#include "files/ScreenSaver.h"

#include <gio/gio.h>
#include <sys/stat.h>

#include <cstdlib>
#include <mutex>
#include <string>

namespace {

constexpr char kService[] = "org.freedesktop.ScreenSaver";
constexpr char kObjectPath[] = "/org/freedesktop/ScreenSaver";
constexpr char kApplication[] = "Tachyrun";
constexpr char kReason[] = "Screen saver switched off by the application";
// A service that doesn't answer must not hold the caller for long.
constexpr gint kCallTimeoutMs = 5000;

// The inhibition belongs to our connection: the service drops it when the
// connection goes, so the connection stays open for the life of the process.
struct SaverState {
  std::mutex mutex;
  GDBusConnection* connection = nullptr;
  bool inhibited = false;
  guint32 cookie = 0;
};

SaverState& State() {
  static SaverState state;
  return state;
}

// The session bus address, without starting a bus as autolaunch would.
std::string SessionBusAddress() {
  if (const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS")) return address;
  const char* runtimeDir = std::getenv("XDG_RUNTIME_DIR");
  if (runtimeDir == nullptr) return {};
  const std::string socket = std::string(runtimeDir) + "/bus";
  struct stat info {};
  if (stat(socket.c_str(), &info) != 0 || !S_ISSOCK(info.st_mode)) return {};
  return "unix:path=" + socket;
}

// The open connection, made when there is none (or the last one closed, and
// with it any inhibition). Null without a bus. Called under the state lock.
GDBusConnection* Connection(SaverState& state) {
  if (state.connection != nullptr && g_dbus_connection_is_closed(state.connection)) {
    g_object_unref(state.connection);
    state.connection = nullptr;
    state.inhibited = false;
  }
  if (state.connection == nullptr) {
    const std::string address = SessionBusAddress();
    if (address.empty()) return nullptr;
    state.connection = g_dbus_connection_new_for_address_sync(
        address.c_str(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr);
  }
  return state.connection;
}

// One method call; the reply (of `replyType`) or null on any error.
GVariant* Call(GDBusConnection* connection, const char* service, const char* path,
               const char* interface, const char* method, GVariant* args,
               const GVariantType* replyType) {
  return g_dbus_connection_call_sync(connection, service, path, interface, method, args, replyType,
                                     G_DBUS_CALL_FLAGS_NONE, kCallTimeoutMs, nullptr, nullptr);
}

GVariant* CallSaver(GDBusConnection* connection, const char* method, GVariant* args,
                    const GVariantType* replyType) {
  return Call(connection, kService, kObjectPath, kService, method, args, replyType);
}

// Runs `use` with the state locked and the connection open; 0 without a bus.
template <typename Use>
int32_t OnBus(Use use) {
  SaverState& state = State();
  std::lock_guard<std::mutex> guard(state.mutex);
  GDBusConnection* connection = Connection(state);
  return connection != nullptr ? use(state, connection) : 0;
}

}  // namespace

int32_t ScreenSaverOff() {
  return OnBus([](SaverState& state, GDBusConnection* connection) -> int32_t {
    if (state.inhibited) return 1;
    GVariant* reply = CallSaver(connection, "Inhibit", g_variant_new("(ss)", kApplication, kReason),
                                G_VARIANT_TYPE("(u)"));
    if (reply == nullptr) return 0;
    g_variant_get(reply, "(u)", &state.cookie);
    g_variant_unref(reply);
    state.inhibited = true;
    return 1;
  });
}

int32_t ScreenSaverOn() {
  return OnBus([](SaverState& state, GDBusConnection* connection) -> int32_t {
    if (!state.inhibited) return 1;
    GVariant* reply =
        CallSaver(connection, "UnInhibit", g_variant_new("(u)", state.cookie), nullptr);
    // A refused cookie is forgotten too: a service that restarted knows none
    // of the old ones, and keeping it would block every later Off.
    state.inhibited = false;
    if (reply == nullptr) return 0;
    g_variant_unref(reply);
    return 1;
  });
}

int32_t IsScreenSaverActive() {
  return OnBus([](SaverState& state, GDBusConnection* connection) -> int32_t {
    GVariant* reply =
        Call(connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
             "NameHasOwner", g_variant_new("(s)", kService), G_VARIANT_TYPE("(b)"));
    if (reply == nullptr) return 0;
    gboolean hasOwner = FALSE;
    g_variant_get(reply, "(b)", &hasOwner);
    g_variant_unref(reply);
    return hasOwner && !state.inhibited ? 1 : 0;
  });
}
