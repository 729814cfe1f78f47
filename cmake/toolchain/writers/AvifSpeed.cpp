// SPDX-License-Identifier: GPL-3.0-or-later
// Linked into the plugin of AVIF and HEIF in front of libheif. AV1's encoder at speed 8 takes half the time
// of speed 7, which the plugin sets, for photographs of the same size and as good.
#include <libheif/heif.h>

#include <cstring>

namespace
{

constexpr int speed = 8;

}

extern "C" heif_error __real_heif_encoder_set_parameter_integer(heif_encoder *encoder, const char *name,
                                                                int value);

extern "C" heif_error __wrap_heif_encoder_set_parameter_integer(heif_encoder *encoder, const char *name,
                                                                int value)
{
    return __real_heif_encoder_set_parameter_integer(encoder, name,
                                                     std::strcmp(name, "speed") == 0 ? speed : value);
}
