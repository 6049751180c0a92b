#pragma once

// The hook groups of the first load-time initialiser, installed in this order.
// Each replacement falls through to the host's own implementation unless the
// extension is enabled and placed where that hook serves.
void installLockScreenHooks();
void installNotificationCenterHooks();
void installSearchHooks();

// The line numbers under which the groups report a missing class.
inline constexpr int lockScreenGroupLine = 384;
inline constexpr int notificationCenterGroupLine = 386;
inline constexpr int searchGroupLine = 387;
inline constexpr const char* firstInitialiserUnit = "Kavelin";
