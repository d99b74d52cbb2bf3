// testing/Recorder.h: puts the recording program in place of another one and reads what it recorded.
#pragma once
#include <doctest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "testing/OwnProgram.h"
#include "testing/Pump.h"
#include "testing/TempFolder.h"

class Recorder {
  public:
    // Copies the program, which lies beside the test, into `folder` under `name`.
    Recorder(const TempFolder& folder, const std::string& name) : folder_(folder) {
        const std::string program = own_program::Folder() + "recorder.exe";
        REQUIRE(CopyFileA(program.c_str(), folder.Path(name).c_str(), FALSE));
    }

    // The starts recorded so far, each "show state, blank, command line"; waits until there are `count` of them.
    [[nodiscard]] std::vector<std::string> Starts(std::size_t count) const {
        std::vector<std::string> starts;
        PumpUntil(20000, [&] { return (starts = Lines()).size() >= count; });
        return starts;
    }

    // What is recorded when as much time has passed as a start could need.
    [[nodiscard]] std::vector<std::string> StartsAfter(DWORD milliseconds) const {
        PumpFor(milliseconds);
        return Lines();
    }

  private:
    [[nodiscard]] std::vector<std::string> Lines() const {
        const std::string text = folder_.Read("recorded.txt");
        std::vector<std::string> lines;
        std::size_t from = 0;
        for (std::size_t end; (end = text.find("\r\n", from)) != std::string::npos; from = end + 2) {
            lines.push_back(text.substr(from, end - from));
        }
        return lines;
    }

    const TempFolder& folder_;
};
