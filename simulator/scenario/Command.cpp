#include "Command.h"

namespace sim {

CommandPhase commandPhase(CommandKind kind)
{
    if (kind <= CommandKind::MissingIvar)
        return CommandPhase::HostShape;
    if (kind <= CommandKind::NotificationRemove)
        return CommandPhase::World;
    if (kind <= CommandKind::AdvanceUntil)
        return CommandPhase::Acting;
    return CommandPhase::Looking;
}

std::string_view commandName(CommandKind kind)
{
    switch (kind) {
    case CommandKind::System: return "system";
    case CommandKind::Device: return "device";
    case CommandKind::Locale: return "locale";
    case CommandKind::TimeZone: return "timezone";
    case CommandKind::MissingClass:
    case CommandKind::MissingIvar: return "missing";
    case CommandKind::Now: return "now";
    case CommandKind::Prefs: return "prefs";
    case CommandKind::PrefsClear: return "prefs-clear";
    case CommandKind::WriteFile:
    case CommandKind::CopyFile: return "file";
    case CommandKind::RemoveFile: return "rm";
    case CommandKind::AppList: return "applist";
    case CommandKind::App: return "app";
    case CommandKind::Switcher: return "switcher";
    case CommandKind::Battery: return "battery";
    case CommandKind::Weather:
    case CommandKind::WeatherOff: return "weather";
    case CommandKind::WeatherHour: return "weather-hour";
    case CommandKind::WeatherDay: return "weather-day";
    case CommandKind::Calendar: return "calendar";
    case CommandKind::Event: return "event";
    case CommandKind::Reminder: return "reminder";
    case CommandKind::Notification: return "notification";
    case CommandKind::NotificationGrouping: return "notifications";
    case CommandKind::Music:
    case CommandKind::MusicNone: return "music";
    case CommandKind::Volume: return "volume";
    case CommandKind::Alarm:
    case CommandKind::AlarmNone: return "alarm";
    case CommandKind::Timer: return "timer";
    case CommandKind::Call: return "call";
    case CommandKind::FaceTime: return "facetime";
    case CommandKind::CalendarImport: return "calendar-import";
    case CommandKind::NotificationRemove: return "notification-remove";
    case CommandKind::Boot: return "boot";
    case CommandKind::Advance: return "advance";
    case CommandKind::Tap: return "tap";
    case CommandKind::DoubleTap: return "doubletap";
    case CommandKind::LongPress: return "longpress";
    case CommandKind::Swipe: return "swipe";
    case CommandKind::Slide: return "slide";
    case CommandKind::Scroll: return "scroll";
    case CommandKind::Pick: return "pick";
    case CommandKind::Home: return "home";
    case CommandKind::Display: return "display";
    case CommandKind::Alert: return "alert";
    case CommandKind::Rotate: return "rotate";
    case CommandKind::Lock: return "lock";
    case CommandKind::Unlock: return "unlock";
    case CommandKind::NotificationCenter: return "nc";
    case CommandKind::Search: return "search";
    case CommandKind::Soak: return "soak";
    case CommandKind::AdvanceUntil: return "advance";
    case CommandKind::Shot: return "shot";
    case CommandKind::Dump: return "dump";
    case CommandKind::ExpectProperty:
    case CommandKind::ExpectAbsent:
    case CommandKind::ExpectHost: return "expect";
    case CommandKind::ExpectShot: return "expect-shot";
    case CommandKind::Tree: return "tree";
    }
    return "?";
}

}
