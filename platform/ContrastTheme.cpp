// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ContrastTheme.h"

#include <windows.h>

namespace platform
{

bool contrastTheme()
{
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof contrast;
    return SystemParametersInfoW(SPI_GETHIGHCONTRAST, contrast.cbSize, &contrast, 0) &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON);
}

} // namespace platform
