// bench/replay/Player.h: an add-in that does nothing but make the calls of a tape again, as a bare loop.
//
// Errors  Where host or Windows do something else than when the tape was recorded, Whole() is false from then on.
#pragma once
#include <windows.h>

#include <oaidl.h>

#include <array>
#include <memory>

#include "bench/replay/Tape.h"

namespace Bench {

class FactoryOf;

enum class Files { Read, LeftOut };

// The state of one replayed session. Host and sinks hold pointers to it: it must outlive the session.
class Player {
  public:
    Player(std::shared_ptr<const Tape> tape, Files files);
    ~Player();
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    [[nodiscard]] IUnknown* Factory() const;  // for the host, borrowed
    // After the session: every step was made, and each ended as before.
    [[nodiscard]] bool Whole();
    [[nodiscard]] int Made(Step::Kind kind) const { return made_[static_cast<std::size_t>(kind)]; }

    // The host has come in by `door` with these objects: what was done then is done. The step at which it left.
    const Step& Enter(const Door& door, const DISPPARAMS& parameters);

  private:
    void Play(const Step& step);
    void PlayLetGo();

    std::shared_ptr<const Tape> tape_;
    Files files_;
    std::size_t next_ = 0;
    bool whole_ = true;
    Slots slots_;
    std::array<int, static_cast<std::size_t>(Step::Kind::count)> made_{};
    std::unique_ptr<FactoryOf> factory_;
};

}  // namespace Bench
