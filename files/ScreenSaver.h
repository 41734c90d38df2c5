#pragma once
// Keeping the screen saver (and the monitor's power saving with it) off
// while the application needs the screen, through the freedesktop
// org.freedesktop.ScreenSaver service on the session bus: Off asks it for an
// inhibition and keeps the cookie, On hands the cookie back. The bus is
// $DBUS_SESSION_BUS_ADDRESS, else $XDG_RUNTIME_DIR/bus; none is started.
// Without a bus or a service every call gives 0 and nothing else happens.

#include <cstdint>

// 1 when this process holds an inhibition afterwards (a second Off asks for
// no second one), 0 when the service can't be reached or refused.
int32_t ScreenSaverOff();

// Hands the cookie back. 1 when the service took it, or when there was none
// to give and the bus answered; 0 without a bus or when the service refused
// the cookie (which is forgotten all the same).
int32_t ScreenSaverOn();

// 1 when a screen saver service is on the bus and this process doesn't
// inhibit it; 0 otherwise, without a bus too.
int32_t IsScreenSaverActive();
