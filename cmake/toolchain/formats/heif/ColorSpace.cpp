// SPDX-License-Identifier: GPL-3.0-or-later
#include "Handler.h"

#include <QColorSpace>
#include <QPointF>

namespace heif
{

namespace
{

QColorSpace fromProfile(const heif_image_handle *handle)
{
    QByteArray profile(static_cast<qsizetype>(heif_image_handle_get_raw_color_profile_size(handle)),
                       Qt::Uninitialized);
    if (profile.isEmpty() ||
        heif_image_handle_get_raw_color_profile(handle, profile.data()).code != heif_error_Ok)
        return {};
    // A profile for grey or CMYK says nothing about the colours that libheif has already made of it.
    const QColorSpace space = QColorSpace::fromIccProfile(profile);
    return space.colorModel() == QColorSpace::ColorModel::Rgb ? space : QColorSpace();
}

struct Transfer {
    QColorSpace::TransferFunction function;
    float gamma;
};

// The numbers are those of ITU-T H.273. Curves for television (1, 6, 14, 15) are written by cameras that mean
// sRGB, and viewers show them so.
Transfer transferOf(heif_transfer_characteristics number)
{
    switch (number) {
    case heif_transfer_characteristic_ITU_R_BT_470_6_System_M:
        return {QColorSpace::TransferFunction::Gamma, 2.2f};
    case heif_transfer_characteristic_ITU_R_BT_470_6_System_B_G:
        return {QColorSpace::TransferFunction::Gamma, 2.8f};
    case heif_transfer_characteristic_linear:
        return {QColorSpace::TransferFunction::Linear, 1.0f};
    case heif_transfer_characteristic_ITU_R_BT_2100_0_PQ:
        return {QColorSpace::TransferFunction::St2084, 0.0f};
    case heif_transfer_characteristic_ITU_R_BT_2100_0_HLG:
        return {QColorSpace::TransferFunction::Hlg, 0.0f};
    default:
        return {QColorSpace::TransferFunction::SRgb, 0.0f};
    }
}

QColorSpace fromNumbers(const heif_color_profile_nclx &nclx)
{
    const auto [transfer, gamma] = transferOf(nclx.transfer_characteristics);
    switch (nclx.color_primaries) {
    case heif_color_primaries_ITU_R_BT_709_5:
    case heif_color_primaries_unspecified:
        return QColorSpace(QColorSpace::Primaries::SRgb, transfer, gamma);
    case heif_color_primaries_SMPTE_EG_432_1:
        return QColorSpace(QColorSpace::Primaries::DciP3D65, transfer, gamma);
    case heif_color_primaries_ITU_R_BT_2020_2_and_2100_0:
        return QColorSpace(QColorSpace::Primaries::Bt2020, transfer, gamma);
    default:
        return QColorSpace(QPointF(nclx.color_primary_white_x, nclx.color_primary_white_y),
                           QPointF(nclx.color_primary_red_x, nclx.color_primary_red_y),
                           QPointF(nclx.color_primary_green_x, nclx.color_primary_green_y),
                           QPointF(nclx.color_primary_blue_x, nclx.color_primary_blue_y), transfer, gamma);
    }
}

} // namespace

QColorSpace colorSpaceOf(const heif_image_handle *handle)
{
    switch (heif_image_handle_get_color_profile_type(handle)) {
    case heif_color_profile_type_prof:
    case heif_color_profile_type_rICC:
        return fromProfile(handle);
    case heif_color_profile_type_nclx: {
        heif_color_profile_nclx *nclx = nullptr;
        if (heif_image_handle_get_nclx_color_profile(handle, &nclx).code != heif_error_Ok || !nclx)
            return {};
        const QColorSpace space = fromNumbers(*nclx);
        heif_nclx_color_profile_free(nclx);
        return space;
    }
    default:
        return {};
    }
}

} // namespace heif
