#include "Warnings.h"

#include "Command.h"

#include <iostream>

namespace sim {

Warnings::Warnings(std::ostream& out)
    : m_out(&out)
{
}

Warnings::Warnings()
    : Warnings(std::cerr)
{
}

bool Warnings::warn(const std::string& file, int line, const std::string& message)
{
    Diagnostic diagnostic { file, line, "warning: " + message };
    *m_out << diagnostic.toString() << "\n";
    m_list.push_back(std::move(diagnostic));
    return !m_strict;
}

bool Warnings::warn(const Command& command, const std::string& message) { return warn(command.file, command.line, message); }

}
