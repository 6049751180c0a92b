#include "Diagnostic.h"

namespace sim {

std::string Diagnostic::toString() const
{
    if (line <= 0)
        return file + ": " + message;
    return file + ":" + std::to_string(line) + ": " + message;
}

}
