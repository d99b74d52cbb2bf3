// bench/replay/Recorder.h: records what a real add-in does in one session of the host. It stands between the two: each
// object of the host is handed on inside a wrapper that notes the calls, and the functions of Windows that the library
// imports for registry, pictures, files and the start of a program are replaced by such as note theirs. The add-in and the host
// notice nothing of it, but that two wrappers of one object are two pointers; COM's identity is that of the object.
//
// Errors  What cannot be played again (another kind of argument or result) makes Whole() false.
#pragma once
#include <windows.h>

#include <oaidl.h>

#include <memory>

#include "bench/replay/Tape.h"

namespace Bench {

class Recorder {
  public:
    // `factory`: that of the add-in in `library`, borrowed. One at a time.
    Recorder(HMODULE library, IUnknown* factory);
    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    [[nodiscard]] IUnknown* Factory() const;  // for the host, borrowed
    [[nodiscard]] bool Whole() const;
    // When the session has ended.
    [[nodiscard]] std::shared_ptr<const Tape> Finish();

  private:
    struct AtWork;
    std::unique_ptr<AtWork> atWork_;
};

}  // namespace Bench
