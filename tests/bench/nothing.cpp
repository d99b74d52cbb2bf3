// A program that does nothing: what starting one costs is then the start alone.
#include <windows.h>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) { return 0; }
