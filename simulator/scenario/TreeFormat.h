#pragma once

#include <nlohmann/json.hpp>

#include <array>
#include <string>

namespace sim {

// What `tree` prints, made from dump nodes: one view a line, indented two
// blanks a level, with the target that reaches it, its class, its screen
// rectangle, its text and its gestures:
//
//   #_timeContainerView  KVView  [0, 20, 187.5, 60]  gestures: tap, longpress
//     #_timeLabel  UILabel  [10, 25, 120, 40]  "9:41"
//
// Views that cannot be seen (hidden, alpha below 0.01, or wholly outside
// the screen) are left out with everything under them, unless `all`.
class TreeFormat {
public:
    using Rect = std::array<double, 4>; // x, y, width, height

    static bool isShown(bool hidden, double alpha) { return !hidden && alpha >= 0.01; }
    // Whether any of the rectangle lies on a screen of that size (an empty
    // rectangle counts when its corner does).
    static bool touchesScreen(const Rect&, double screenWidth, double screenHeight);
    // "[0, 20, 187.5, 60]"
    static std::string rectangle(const Rect&);

    // One node's line, without its children.
    static std::string line(const nlohmann::json& node, int depth);
    // The lines of a node and what it holds, or of each node of an array.
    static std::string tree(const nlohmann::json& nodes, double screenWidth, double screenHeight, bool all);

private:
    static void append(std::string& out, const nlohmann::json& node, int depth, double screenWidth, double screenHeight, bool all);
};

}
