// A stand-in for the desktop's screen saver service, for tests: it owns
// org.freedesktop.ScreenSaver on the session bus, answers Inhibit and
// UnInhibit as a desktop does, and writes every call it receives to a log,
// one line each, so that a test can check what reached it.
//
//   fake_screensaver LOG [--refuse]
//
// "ready" is logged once the name is owned; --refuse answers Inhibit with
// an error. SIGTERM ends it.

#include <gio/gio.h>
#include <glib-unix.h>

#include <cstdio>
#include <cstring>
#include <set>

namespace {

constexpr char kIntrospection[] =
    "<node>"
    " <interface name='org.freedesktop.ScreenSaver'>"
    "  <method name='Inhibit'>"
    "   <arg type='s' name='application_name' direction='in'/>"
    "   <arg type='s' name='reason_for_inhibit' direction='in'/>"
    "   <arg type='u' name='cookie' direction='out'/>"
    "  </method>"
    "  <method name='UnInhibit'>"
    "   <arg type='u' name='cookie' direction='in'/>"
    "  </method>"
    " </interface>"
    "</node>";

struct Service {
  FILE* log = nullptr;
  bool refuse = false;
  guint32 nextCookie = 1000;
  std::set<guint32> cookies;
};

void Log(Service* service, const char* line) {
  std::fprintf(service->log, "%s\n", line);
  std::fflush(service->log);
}

void OnMethodCall(GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar* method,
                  GVariant* parameters, GDBusMethodInvocation* invocation, gpointer data) {
  auto* service = static_cast<Service*>(data);
  char line[1024];
  if (std::strcmp(method, "Inhibit") == 0) {
    const gchar* application = nullptr;
    const gchar* reason = nullptr;
    g_variant_get(parameters, "(&s&s)", &application, &reason);
    if (service->refuse) {
      std::snprintf(line, sizeof line, "Inhibit %s|%s -> refused", application, reason);
      Log(service, line);
      g_dbus_method_invocation_return_dbus_error(invocation, "org.freedesktop.DBus.Error.Failed",
                                                 "inhibition refused");
      return;
    }
    const guint32 cookie = service->nextCookie++;
    service->cookies.insert(cookie);
    std::snprintf(line, sizeof line, "Inhibit %s|%s -> %u", application, reason, cookie);
    Log(service, line);
    g_dbus_method_invocation_return_value(invocation, g_variant_new("(u)", cookie));
  } else {
    guint32 cookie = 0;
    g_variant_get(parameters, "(u)", &cookie);
    const bool known = service->cookies.erase(cookie) == 1;
    std::snprintf(line, sizeof line, "UnInhibit %u%s", cookie, known ? "" : " unknown");
    Log(service, line);
    if (known) {
      g_dbus_method_invocation_return_value(invocation, nullptr);
    } else {
      g_dbus_method_invocation_return_dbus_error(
          invocation, "org.freedesktop.DBus.Error.InvalidArgs", "unknown cookie");
    }
  }
}

gboolean OnTerm(gpointer loop) {
  g_main_loop_quit(static_cast<GMainLoop*>(loop));
  return G_SOURCE_REMOVE;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: %s LOG [--refuse]\n", argv[0]);
    return 2;
  }
  Service service;
  service.log = std::fopen(argv[1], "a");
  service.refuse = argc > 2 && std::strcmp(argv[2], "--refuse") == 0;
  if (service.log == nullptr) return 1;

  GError* error = nullptr;
  GDBusConnection* bus = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, &error);
  if (bus == nullptr) {
    std::fprintf(stderr, "no session bus: %s\n", error->message);
    return 1;
  }
  GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(kIntrospection, nullptr);
  static const GDBusInterfaceVTable vtable = {OnMethodCall, nullptr, nullptr, {}};
  g_dbus_connection_register_object(bus, "/org/freedesktop/ScreenSaver", node->interfaces[0],
                                    &vtable, &service, nullptr, nullptr);
  // 4: do not queue; 1 in the reply: we own the name now.
  GVariant* reply = g_dbus_connection_call_sync(
      bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
      g_variant_new("(su)", "org.freedesktop.ScreenSaver", 4u), G_VARIANT_TYPE("(u)"),
      G_DBUS_CALL_FLAGS_NONE, -1, nullptr, &error);
  guint32 owned = 0;
  if (reply != nullptr) {
    g_variant_get(reply, "(u)", &owned);
    g_variant_unref(reply);
  }
  if (owned != 1) {
    std::fprintf(stderr, "could not own org.freedesktop.ScreenSaver\n");
    return 1;
  }
  Log(&service, "ready");

  GMainLoop* loop = g_main_loop_new(nullptr, FALSE);
  g_unix_signal_add(SIGTERM, OnTerm, loop);
  g_main_loop_run(loop);
  g_main_loop_unref(loop);
  g_dbus_node_info_unref(node);
  g_object_unref(bus);
  std::fclose(service.log);
  return 0;
}
