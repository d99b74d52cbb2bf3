#include "check/ProgramFile.h"

#include <doctest.h>

using Check::Program;

namespace {

void Put(std::string& bytes, std::size_t at, std::uint32_t number, int length) {
    for (int i = 0; i < length; ++i)
        bytes[at + static_cast<std::size_t>(i)] = static_cast<char>(number >> 8 * i & 0xFF);
}

// A header with one section that ends at byte 1024.
std::string Header(std::uint32_t machine, std::uint32_t flags) {
    std::string bytes(1024, '\0');
    bytes[0] = 'M';
    bytes[1] = 'Z';
    Put(bytes, 0x3C, 0x80, 4);
    Put(bytes, 0x80, 0x4550, 4);
    Put(bytes, 0x84, machine, 2);
    Put(bytes, 0x86, 1, 2);
    Put(bytes, 0x94, 0xE0, 2);
    Put(bytes, 0x96, flags, 2);
    Put(bytes, 0x80 + 24 + 0xE0 + 16, 512, 4);
    Put(bytes, 0x80 + 24 + 0xE0 + 20, 512, 4);
    return bytes;
}

Program Read(const std::string& bytes, std::uint64_t size) {
    Program program;
    Check::ReadHeader(bytes, size, program);
    return program;
}

}  // namespace

TEST_CASE("a program's header tells its bitness and whether it is a library") {
    CHECK(Read(Header(0x14C, 0x2000), 1024).bits == 32);
    CHECK(Read(Header(0x14C, 0x2000), 1024).isLibrary);
    CHECK(Read(Header(0x8664, 0), 1024).bits == 64);
    CHECK_FALSE(Read(Header(0x8664, 0), 1024).isLibrary);
    CHECK(Read(Header(0x1C0, 0), 1024).bits == 0);
}

TEST_CASE("a program that is shorter than its sections is not whole") {
    CHECK(Read(Header(0x14C, 0x2000), 1024).whole);
    CHECK_FALSE(Read(Header(0x14C, 0x2000), 1023).whole);
}

TEST_CASE("a header without sections is read though nothing comes behind it") {
    std::string bare = Header(0x14C, 0x2000).substr(0, 0x98);
    Put(bare, 0x86, 0, 2);
    CHECK(Read(bare, bare.size()).bits == 32);
}

TEST_CASE("what is no program has no bitness, however short it is cut") {
    const std::string good = Header(0x14C, 0x2000);
    for (std::size_t length = 0; length < 0x98; ++length) CHECK(Read(good.substr(0, length), length).bits == 0);
    CHECK(Read("MZ", 2).bits == 0);
    CHECK(Read("text", 4).bits == 0);
    std::string far = good;
    Put(far, 0x3C, 0xFFFFFFF0, 4);
    CHECK(Read(far, far.size()).bits == 0);
}
