// SPDX-License-Identifier: GPL-3.0-or-later
// Stands for the iconv library, which mingw-w64 does not have, and says that no conversion is known. The
// decoder is asked for the bytes of a code as they are (ZBAR_CFG_BINARY) and then converts only what a code
// marks with another character set; such a code counts as unreadable.
#pragma once

#include <stddef.h>

typedef void *iconv_t;

static inline iconv_t iconv_open(const char *to, const char *from)
{
    (void)to;
    (void)from;
    return (iconv_t)-1;
}

static inline size_t iconv(iconv_t conversion, char **in, size_t *inLeft, char **out, size_t *outLeft)
{
    (void)conversion;
    (void)in;
    (void)inLeft;
    (void)out;
    (void)outLeft;
    return (size_t)-1;
}

static inline int iconv_close(iconv_t conversion)
{
    (void)conversion;
    return 0;
}
