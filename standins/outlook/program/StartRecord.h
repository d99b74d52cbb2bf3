// program/StartRecord.h: a file in which started programs note themselves, a line a start (option /record).
//
// Shapes  A line: fields "name=value" with a tab between, CR LF at the end; inside a value "\t", "\r", "\n" and "\\"
//         stand for what they are elsewhere. Known names: "command", the command line as it arrived; "show", Windows'
//         number of the show state, -1 where the starter said none; "note", a few words for people. Others are kept.
// Errors  A file that is missing or cannot be read has no starts; a line that is not finished yet is not read.
#pragma once
#include <map>
#include <string>
#include <vector>

namespace program {

struct NotedStart {
    std::string commandLine, note;
    int show = -1;
    std::map<std::string, std::string> fields;  // all of them
};

// The starts noted in the file, oldest first; none for the empty path.
[[nodiscard]] std::vector<NotedStart> ReadStarts(const std::string& path);

}  // namespace program
