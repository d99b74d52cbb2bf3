#include "platform/Profile.h"

#include <windows.h>

namespace platform {
namespace {

constexpr std::size_t firstRoom = 1024;
constexpr std::size_t mostRoom = std::size_t{1} << 24;

}  // namespace

std::string ProfileText(const std::string& file, const std::string& section, const std::string& key,
                        const std::string& otherwise) {
    std::string value;
    for (std::size_t room = firstRoom;; room *= 4) {
        value.resize(room);
        const DWORD length = GetPrivateProfileStringA(section.c_str(), key.c_str(), otherwise.c_str(), value.data(),
                                                      static_cast<DWORD>(room), file.c_str());
        if (length + 1 < room || room >= mostRoom) {  // what was cut short fills the room
            value.resize(length);
            return value;
        }
    }
}

}  // namespace platform
