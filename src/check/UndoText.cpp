#include "check/UndoText.h"

#include "platform/Text.h"

namespace Check {
namespace {

constexpr std::string_view lineEnd = "\r\n";

// As the registry editor writes it: the classes of a user and all of the machine's software have a view of 32 bits.
std::string PathOf(const Change& change, bool has64Bits) {
    const std::string root = change.root == Root::CurrentUser ? "HKEY_CURRENT_USER\\" : "HKEY_LOCAL_MACHINE\\";
    if (!has64Bits || change.view != RegistryView::Bits32) return root + change.key;
    const std::string_view classes = "Software\\Classes\\", software = "Software\\";
    const std::string_view split = change.root == Root::CurrentUser ? classes : software;
    if (!platform::SameIgnoringCase(std::string_view(change.key).substr(0, split.size()), split))
        return root + change.key;
    return root + std::string(split) + "Wow6432Node\\" + change.key.substr(split.size());
}

std::string Quoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char letter : text) {
        if (letter == '"' || letter == '\\') quoted.push_back('\\');
        quoted.push_back(letter);
    }
    return quoted + "\"";
}

std::string HexOf(const Value& value) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string hex = value.type == platform::RegistryBinary
                          ? "hex:"
                          : "hex(" + platform::ToLower(platform::UpperHex(value.type)) + "):";
    for (std::size_t i = 0; i < value.bytes.size(); ++i) {
        const auto byte = static_cast<unsigned char>(value.bytes[i]);
        if (i > 0) hex.push_back(',');
        hex.push_back(digits[byte >> 4]);
        hex.push_back(digits[byte & 15]);
    }
    return hex;
}

// A text that the editor would read back as it is: one line, and one NUL at its end at most.
bool IsPlain(const Value& value) {
    const auto text = TextOf(value);
    return text && value.type == platform::RegistryText && text->find_first_of("\r\n") == std::string::npos &&
           value.bytes.size() <= text->size() + 1;
}

std::string Before(const Value& value) {
    if (value.found != Found::There) return "-";
    if (IsPlain(value)) return Quoted(*TextOf(value));
    if (const auto number = NumberOf(value)) {
        const std::string hex = platform::ToLower(platform::UpperHex(*number));
        return "dword:" + std::string(8 - hex.size(), '0') + hex;
    }
    return HexOf(value);
}

}  // namespace

// Backwards, so that a key that was made goes after what is in it.
std::string UndoText(const std::vector<Done>& done, bool has64Bits) {
    std::string text = "REGEDIT4\r\n";
    for (std::size_t i = done.size(); i-- > 0;) {
        const Done& one = done[i];
        const std::string path = PathOf(one.change, has64Bits);
        text.append(lineEnd);
        if (one.keyBefore == Found::Missing && !one.change.removes) {
            text.append("[-" + path + "]").append(lineEnd);
            continue;
        }
        text.append("[" + path + "]").append(lineEnd);
        text.append(one.change.name.empty() ? "@" : Quoted(one.change.name)).append("=");
        text.append(Before(one.before)).append(lineEnd);
    }
    return text;
}

}  // namespace Check
