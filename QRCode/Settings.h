// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Keys.h"
#include "settings/Values.h"

#include "QRCode/engine/Style.h"

// The stored values of the module. The names are the stored format.
namespace qr::stored
{

inline constexpr QStringView key = settings::keys::qrCodeGen;

// Rows of the country table. Without a stored value, the system's country.
inline constexpr settings::Number callCountry{key, u"optionsCallCountryIndex", -1};
inline constexpr settings::Text callNumber{key, u"optionsCallPhoneNumber"};
inline constexpr settings::Number smsCountry{key, u"optionsSMSCountryIndex", -1};
inline constexpr settings::Text smsNumber{key, u"optionsSMSPhoneNumber"};
inline constexpr settings::Text smsMessage{key, u"optionsSMSMessage"};
inline constexpr settings::Number whatsappCountry{key, u"optionsWhatsAppCountryIndex", -1};
inline constexpr settings::Text whatsappNumber{key, u"optionsWhatsAppPhoneNumber"};
inline constexpr settings::Text whatsappMessage{key, u"optionsWhatsAppMessage"};

inline constexpr settings::Text emailAddress{key, u"optionsEmailAddress"};
inline constexpr settings::Text emailSubject{key, u"optionsEmailSubject"};
inline constexpr settings::Text emailMessage{key, u"optionsEmailMessage"};
inline constexpr settings::Text linkContent{key, u"optionsLinkContent"};
inline constexpr settings::Text textContent{key, u"optionsTextContent"};

inline constexpr settings::Text wifiName{key, u"optionsWifiNetworkName"};
inline constexpr settings::Number wifiType{key, u"optionsWifiNetworkTypeIndex", 0, 0, 1};
inline constexpr settings::Text wifiPassword{key, u"optionsWifiPassword"};
inline constexpr settings::Flag wifiHidden{key, u"optionsWifiHidden"};
inline constexpr settings::Flag wifiForgetPassword{key, u"optionsWifiForgetPassword"};

inline constexpr settings::Text vcardFirstName{key, u"optionsVCardFirstName"};
inline constexpr settings::Text vcardLastName{key, u"optionsVCardLastName"};
inline constexpr settings::Text vcardPhone{key, u"optionsVCardPhoneNumber"};
inline constexpr settings::Text vcardMobile{key, u"optionsVCardMobileNumber"};
inline constexpr settings::Text vcardFax{key, u"optionsVCardFaxNumber"};
inline constexpr settings::Text vcardEmail{key, u"optionsVCardEmailAddress"};
inline constexpr settings::Text vcardWebsite{key, u"optionsVCardWebsite"};
inline constexpr settings::Text vcardCompany{key, u"optionsVCardCompany"};
inline constexpr settings::Text vcardJobTitle{key, u"optionsVCardJobTitle"};
inline constexpr settings::Text vcardAddress{key, u"optionsVCardAddress"};
inline constexpr settings::Text vcardCity{key, u"optionsVCardCity"};
inline constexpr settings::Text vcardPostCode{key, u"optionsVCardPostCode"};
inline constexpr settings::Text vcardCountry{key, u"optionsVCardCountry"};

inline constexpr settings::Text paypalUser{key, u"optionsPaypalUserName"};
inline constexpr settings::Text paypalAmount{key, u"optionsPaypalAmount"};
inline constexpr settings::Number paypalCurrency{key, u"optionsPaypalCurrencyIndex", 0, 0, 1000};

// The design of the code. Colours are 0xRRGGBB, shapes and fills are enumerator values.
inline constexpr settings::Number imageSize{key, u"qrCodeImgSize", 600, minImageSize, maxImageSize};
inline constexpr settings::Number margin{key, u"qrCodeMargin", core::qrQuietZone, 0, maxMargin};
inline constexpr settings::Number correction{key, u"qrCodeErrorCorrection", 1, 0, 3};
inline constexpr settings::Number colorType{key, u"qrCodeColorType", 0, 0, 4};
inline constexpr settings::Number color{key, u"qrCodeColor", 0x000000, 0, 0xFFFFFF};
inline constexpr settings::Number color2{key, u"qrCodeColor2", 0x0F5BB5, 0, 0xFFFFFF};
inline constexpr settings::Number backColor{key, u"qrCodeBackColor", 0xFFFFFF, 0, 0xFFFFFF};
inline constexpr settings::Flag transparent{key, u"qrCodeTransparent"};
inline constexpr settings::Number bodyShape{key, u"qrCodeBodyShape", 0, 0, 5};
inline constexpr settings::Number eyeShape{key, u"qrCodeEyeShape", 0, 0, 3};
inline constexpr settings::Number eyeCentreShape{key, u"qrCodeEyeCentreShape", 0, 0, 3};
inline constexpr settings::Text logo{key, u"qrCodeLogo"}; // path; empty for none
inline constexpr settings::Number logoSize{key, u"qrCodeLogoSize", 20, minLogoSize, maxLogoSize};
inline constexpr settings::Flag logoBack{key, u"qrCodeLogoBack", true};
inline constexpr settings::Number logoBackSize{key, u"qrCodeLogoBackSize", 10, 0, maxLogoBackSize};
inline constexpr settings::Number logoBackShape{key, u"qrCodeLogoBackShape", 1, 0, 2};

} // namespace qr::stored
