// outlook/ribbon/Schema.h: what Office takes as a ribbon's XML, and what it refuses as a whole.
//
// Office's own schemas have more elements than are known here; the ones that are missing are refused, so that a test
// says so instead of passing by. Assumed: Outlook 2007 refuses the later namespace; the names of the home tabs of
// contacts, calendar and tasks in Outlook 2010 (public lists begin with 2013).
#pragma once
#include <string>
#include <vector>

#include "outlook/ribbon/Xml.h"

namespace standin::ribbon {

struct Rules {
    int version = 14;
    std::vector<std::string> missingIds = {};  // built-in names that this host has not, against the lists
};

// What is wrong with it, a line each, as Office's developer messages put it; empty when it is taken.
[[nodiscard]] std::vector<std::string> Check(const XmlElement& root, const Rules& rules);

}  // namespace standin::ribbon
