// Every C++ header of the library includes this one. Without C++20, which neither GCC nor clang
// takes by itself, a program would get hundreds of errors about spans, concepts and comparisons.
#ifndef HALVANE_BASE_CXX20_H
#define HALVANE_BASE_CXX20_H

#if !defined(__cplusplus) || __cplusplus < 202002L
#error "This header of Halvane needs C++20 (-std=c++20). C programs use those of halvane/utils/."
#include <compile with -std=c++20>  // does not exist, which ends the compilation
#endif

#endif
