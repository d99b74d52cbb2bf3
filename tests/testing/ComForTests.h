// testing/ComForTests.h: COM for the whole run of a test program, as the host's thread has it.
#pragma once
#include <windows.h>
// ole2 after windows.h
#include <ole2.h>

struct ComForTests {
    ComForTests() { OleInitialize(nullptr); }
    ~ComForTests() { OleUninitialize(); }
    ComForTests(const ComForTests&) = delete;
    ComForTests& operator=(const ComForTests&) = delete;
};
inline const ComForTests comForTests;
