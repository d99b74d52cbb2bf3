// fuzz/Fuzz.h: what a fuzz target consists of. The same source links with libFuzzer (preset native-fuzz)
// and with a plain main that replays the target's corpus as a test.
#pragma once
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

// Input taken from the front; where it has run out, zeros and empty texts follow.
class Input {
  public:
    Input(const std::uint8_t* data, std::size_t size) : data_(data), left_(size) {}

    [[nodiscard]] bool Empty() const { return left_ == 0; }
    std::uint8_t Byte() {
        if (left_ == 0) return 0;
        --left_;
        return *data_++;
    }
    std::string Text(std::size_t length) {
        length = std::min(length, left_);
        std::string text(data_, data_ + length);
        data_ += length;
        left_ -= length;
        return text;
    }

  private:
    const std::uint8_t* data_;
    std::size_t left_;
};

inline void Expect(bool holds, const char* rule) {
    if (holds) return;
    std::fprintf(stderr, "broken: %s\n", rule);
    std::abort();
}

}  // namespace fuzz
