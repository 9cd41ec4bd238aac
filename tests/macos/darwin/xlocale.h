// Functions with a locale, which the C++ library takes from this header on macOS.
#pragma once

#include <locale.h>
#include <stdarg.h>
#include <stdint.h>
#include <wctype.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef uint32_t __uint32_t;
enum {
    _CTYPE_A = 1 << 16,
    _CTYPE_C = 1 << 17,
    _CTYPE_D = 1 << 18,
    _CTYPE_L = 1 << 19,
    _CTYPE_P = 1 << 20,
    _CTYPE_S = 1 << 21,
    _CTYPE_U = 1 << 22,
    _CTYPE_X = 1 << 23,
    _CTYPE_B = 1 << 24,
    _CTYPE_R = 1 << 25,
};
long long strtoll_l(const char*, char**, int, locale_t);
unsigned long long strtoull_l(const char*, char**, int, locale_t);
int sscanf_l(const char*, locale_t, const char*, ...);
int snprintf_l(char*, unsigned long, locale_t, const char*, ...);
int asprintf_l(char**, locale_t, const char*, ...);

#ifdef __cplusplus
}
#endif
