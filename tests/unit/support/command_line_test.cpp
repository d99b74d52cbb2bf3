#include <doctest.h>

#include "support/CommandLine.h"

using CommandLine::Arguments;

TEST_CASE("the arguments stand behind the program, quoted or not, without the blanks around them") {
    CHECK(Arguments("outlook.exe restart") == "restart");
    CHECK(Arguments("\"C:\\Program Files\\outlook.exe\"  restart \t") == "restart");
    CHECK(Arguments("\"C:\\Program Files\\outlook.exe\" /c ipm.note") == "/c ipm.note");
    CHECK(Arguments("\"C:\\outlook.exe\"restart") == "restart");
}

TEST_CASE("a command line of the program alone has no arguments") {
    for (const char* line : {"", " ", "x.exe", "x.exe ", "\"a b.exe\"", "\"a b.exe\"  ", "\"never closed"}) {
        CHECK(Arguments(line).empty());
    }
}
