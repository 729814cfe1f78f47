// SPDX-License-Identifier: GPL-3.0-or-later
// What the configure script of ZBar would find out, for a decoder of QR codes alone.
#pragma once

#define ENABLE_QRCODE 1
#define HAVE_ERRNO_H 1
#define HAVE_INTTYPES_H 1
#define HAVE_UNISTD_H 1
#define HAVE_SYS_TIME_H 1
#define NO_STATS 1
#define ZBAR_VERSION_MAJOR 0
#define ZBAR_VERSION_MINOR 23
#define ZBAR_VERSION_PATCH 92
#define LIB_VERSION_MAJOR 0
#define LIB_VERSION_MINOR 3
#define LIB_VERSION_REVISION 0
