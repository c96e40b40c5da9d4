#pragma once

#include "movies/maker/Bytes.h"
#include "movies/maker/Drawing.h"
#include "movies/maker/Source.h"

#include <map>
#include <string>

/// The things that a movie is made of, by name, and the tags that define them.
class Definitions {
public:
    /// The number of a new thing, whose tag is to be appended then. Its name may be empty.
    [[nodiscard]] unsigned add(const Statement& statement, const std::string& name);
    void append(const Bytes& tag) { tags.append(tag); }
    /// Complains when nothing has the name.
    [[nodiscard]] unsigned find(const Statement& statement, const std::string& name) const;

    [[nodiscard]] const Bytes& get() const { return tags; }

private:
    std::map<std::string, unsigned> numbers;
    unsigned last = 0;
    Bytes tags;
};
