// bench/replay/Recording.h: the tape while it is being recorded, and what is known of the objects on it.
#pragma once
#include <windows.h>

#include <oaidl.h>

#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "bench/replay/Tape.h"

namespace Bench {

class Recording {
  public:
    Tape tape;
    bool whole = true;

    [[nodiscard]] int NewObject() { return objects_++; }
    [[nodiscard]] int NewHandle() { return handles_++; }
    [[nodiscard]] int NewKey() { return keys_++; }
    [[nodiscard]] int NewCookie() { return cookies_++; }

    // The place of a step whose work begins now: what the host does meanwhile comes behind it.
    std::size_t Begin(Step::Kind kind) {
        tape.steps.push_back({.kind = kind});
        return tape.steps.size() - 1;
    }
    void End(std::size_t step, std::function<bool(Slots&)> play) { tape.steps[step].play = std::move(play); }
    void Enter(const Door& door, std::vector<int> objects = {}) {
        tape.steps.push_back({.kind = Step::Kind::Enter, .door = door, .objects = std::move(objects)});
    }
    void Leave(std::wstring text = {}) { tape.steps.push_back({.kind = Step::Kind::Leave, .text = std::move(text)}); }
    void LetGo(int slot) {
        End(Begin(Step::Kind::LetGo), [slot](Slots& slots) {
            slots.objects[static_cast<std::size_t>(slot)]->Release();
            return true;
        });
    }

    // Pictures are the library's own objects: no wrapper tells when one is let go of. It goes with its last use.
    void MadePicture(IUnknown* identity, int slot, std::size_t step) {
        pictures_[identity] = slot;
        lastUse_[slot] = step;
    }
    int UsePicture(IUnknown* identity, std::size_t step) {
        const auto known = pictures_.find(identity);
        if (known == pictures_.end()) return noSlot;
        lastUse_[known->second] = step;
        return known->second;
    }
    void LetPicturesGo() {
        for (const auto& [slot, step] : lastUse_) tape.steps[step].letGo.push_back(slot);
        lastUse_.clear();
    }

    std::map<HANDLE, int> handles;
    std::map<HANDLE, IUnknown*> pictureOf;  // the bitmap of a picture goes with it
    std::map<HKEY, int> keys;

  private:
    int objects_ = 0, handles_ = 0, keys_ = 0, cookies_ = 0;
    std::map<IUnknown*, int> pictures_;
    std::map<int, std::size_t> lastUse_;
};

// That of the recorder that is at work; the functions that take the place of Windows' own have no other way to it.
extern Recording* recording;

}  // namespace Bench
