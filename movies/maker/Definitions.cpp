#include "movies/maker/Definitions.h"

unsigned Definitions::add(const Statement& statement, const std::string& name) {
    ++last;
    if (!name.empty() && !numbers.emplace(name, last).second) {
        statement.complain("there is a \"" + name + "\" already");
    }
    return last;
}

unsigned Definitions::find(const Statement& statement, const std::string& name) const {
    const auto found = numbers.find(name);
    if (found == numbers.end()) statement.complain("nothing is called \"" + name + "\"");
    return found->second;
}
