// testing/ImportName.h: the name by which a program's code finds an imported function. A test that defines it stands
// before Windows' own function, for the code that is linked into the test.
#pragma once

// `bytes`: of all arguments together, as 32-bit names have them.
#ifdef _WIN64
#define IMPORT_NAME(function, bytes) "__imp_" function
#else
#define IMPORT_NAME(function, bytes) "__imp__" function "@" bytes
#endif
