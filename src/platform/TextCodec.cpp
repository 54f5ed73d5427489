#include "platform/TextCodec.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <map>
#include <memory>

namespace {
constexpr int kFallbackPage = 437;
constexpr char kSubstitute = '?';
constexpr int kFirstHighByte = 128;
constexpr int kByteCount = 256;
/// Added to the number of an undefined byte when the character of that number is taken.
constexpr char16_t kPrivateUse = 0xF700;

/// Bytes 128 to 255 of pages that the C library lacks or that must not depend on it.
struct CBuiltInPage {
    int codePage;
    QStringView highHalf;
};

constexpr CBuiltInPage kBuiltIn[] = {
    {437,
     u"ÇüéâäàåçêëèïîìÄÅÉæÆôöòûùÿÖÜ¢£¥₧ƒáíóúñÑªº¿⌐¬½¼¡«»░▒▓│┤╡╢╖╕╣║╗╝╜╛┐"
     u"└┴┬├─┼╞╟╚╔╩╦╠═╬╧╨╤╥╙╘╒╓╫╪┘┌█▄▌▐▀αßΓπΣσµτΦΘΩδ∞φε∩≡±≥≤⌠⌡÷≈°∙·√ⁿ²■\u00A0"},
    {720,
     u"\u0080\u0081éâ\u0084à\u0086çêëèïî\u008D\u008E\u008F\u0090\u0651\u0652ô¤\u0640ûù"
     u"\u0621\u0622\u0623\u0624£\u0625\u0626\u0627\u0628\u0629\u062A\u062B\u062C\u062D\u062E\u062F"
     u"\u0630\u0631\u0632\u0633\u0634\u0635«»░▒▓│┤╡╢╖╕╣║╗╝╜╛┐"
     u"└┴┬├─┼╞╟╚╔╩╦╠═╬╧╨╤╥╙╘╒╓╫╪┘┌█▄▌▐▀"
     u"\u0636\u0637\u0638\u0639\u063A\u0641µ\u0642\u0643\u0644\u0645\u0646\u0647\u0648\u0649\u064A"
     u"≡\u064B\u064C\u064D\u064E\u064F\u0650≈°∙·√ⁿ²■\u00A0"},
};

/// The OEM pages of Windows. The first row that matches counts; AnyScript and AnyTerritory match
/// all.
struct CLocalePage {
    QLocale::Language language;
    QLocale::Script script;
    QLocale::Territory territory;
    int codePage;
};

constexpr auto kAnyScript = QLocale::AnyScript;
constexpr auto kAnywhere = QLocale::AnyTerritory;

// Languages without a row get 437. Among them are Japanese, Chinese and Korean: their OEM pages
// take two bytes per character, which this codec does not support.
constexpr CLocalePage kLocalePages[] = {
    {QLocale::English, kAnyScript, QLocale::UnitedStates, 437},
    {QLocale::English, kAnyScript, QLocale::HongKong, 437},
    {QLocale::English, kAnyScript, QLocale::India, 437},
    {QLocale::English, kAnyScript, QLocale::Malaysia, 437},
    {QLocale::English, kAnyScript, QLocale::Philippines, 437},
    {QLocale::English, kAnyScript, QLocale::Singapore, 437},
    {QLocale::English, kAnyScript, QLocale::SouthAfrica, 437},
    {QLocale::English, kAnyScript, QLocale::Zimbabwe, 437},
    {QLocale::English, kAnyScript, kAnywhere, 850},
    // Western Europe and its languages overseas.
    {QLocale::Afrikaans, kAnyScript, kAnywhere, 850},
    {QLocale::Basque, kAnyScript, kAnywhere, 850},
    {QLocale::Breton, kAnyScript, kAnywhere, 850},
    {QLocale::Catalan, kAnyScript, kAnywhere, 850},
    {QLocale::Danish, kAnyScript, kAnywhere, 850},
    {QLocale::Dutch, kAnyScript, kAnywhere, 850},
    {QLocale::Faroese, kAnyScript, kAnywhere, 850},
    {QLocale::Finnish, kAnyScript, kAnywhere, 850},
    {QLocale::French, kAnyScript, kAnywhere, 850},
    {QLocale::Galician, kAnyScript, kAnywhere, 850},
    {QLocale::German, kAnyScript, kAnywhere, 850},
    {QLocale::Icelandic, kAnyScript, kAnywhere, 850},
    {QLocale::Indonesian, kAnyScript, kAnywhere, 850},
    {QLocale::Irish, kAnyScript, kAnywhere, 850},
    {QLocale::Italian, kAnyScript, kAnywhere, 850},
    {QLocale::Luxembourgish, kAnyScript, kAnywhere, 850},
    {QLocale::Malay, kAnyScript, kAnywhere, 850},
    {QLocale::NorwegianBokmal, kAnyScript, kAnywhere, 850},
    {QLocale::NorwegianNynorsk, kAnyScript, kAnywhere, 850},
    {QLocale::Portuguese, kAnyScript, kAnywhere, 850},
    {QLocale::Romansh, kAnyScript, kAnywhere, 850},
    {QLocale::Spanish, kAnyScript, kAnywhere, 850},
    {QLocale::Swedish, kAnyScript, kAnywhere, 850},
    {QLocale::SwissGerman, kAnyScript, kAnywhere, 850},
    {QLocale::Welsh, kAnyScript, kAnywhere, 850},
    // Cyrillic, before the Latin rows of languages written both ways.
    {QLocale::Bosnian, QLocale::CyrillicScript, kAnywhere, 855},
    {QLocale::Serbian, QLocale::CyrillicScript, kAnywhere, 855},
    {QLocale::Azerbaijani, QLocale::CyrillicScript, kAnywhere, 866},
    {QLocale::Uzbek, QLocale::CyrillicScript, kAnywhere, 866},
    {QLocale::Belarusian, kAnyScript, kAnywhere, 866},
    {QLocale::Bulgarian, kAnyScript, kAnywhere, 866},
    {QLocale::Kazakh, kAnyScript, kAnywhere, 866},
    {QLocale::Kyrgyz, kAnyScript, kAnywhere, 866},
    {QLocale::Macedonian, kAnyScript, kAnywhere, 866},
    {QLocale::Mongolian, QLocale::CyrillicScript, kAnywhere, 866},
    {QLocale::Russian, kAnyScript, kAnywhere, 866},
    {QLocale::Tajik, kAnyScript, kAnywhere, 866},
    {QLocale::Tatar, kAnyScript, kAnywhere, 866},
    {QLocale::Ukrainian, kAnyScript, kAnywhere, 866},
    // Central Europe.
    {QLocale::Albanian, kAnyScript, kAnywhere, 852},
    {QLocale::Bosnian, kAnyScript, kAnywhere, 852},
    {QLocale::Croatian, kAnyScript, kAnywhere, 852},
    {QLocale::Czech, kAnyScript, kAnywhere, 852},
    {QLocale::Hungarian, kAnyScript, kAnywhere, 852},
    {QLocale::Polish, kAnyScript, kAnywhere, 852},
    {QLocale::Romanian, kAnyScript, kAnywhere, 852},
    {QLocale::Serbian, kAnyScript, kAnywhere, 852},
    {QLocale::Slovak, kAnyScript, kAnywhere, 852},
    {QLocale::Slovenian, kAnyScript, kAnywhere, 852},
    // The Baltic.
    {QLocale::Estonian, kAnyScript, kAnywhere, 775},
    {QLocale::Latvian, kAnyScript, kAnywhere, 775},
    {QLocale::Lithuanian, kAnyScript, kAnywhere, 775},
    // One page each.
    {QLocale::Greek, kAnyScript, kAnywhere, 737},
    {QLocale::Azerbaijani, kAnyScript, kAnywhere, 857},
    {QLocale::Turkish, kAnyScript, kAnywhere, 857},
    {QLocale::Uzbek, kAnyScript, kAnywhere, 857},
    {QLocale::Hebrew, kAnyScript, kAnywhere, 862},
    {QLocale::Arabic, kAnyScript, kAnywhere, 720},
    {QLocale::Persian, kAnyScript, kAnywhere, 720},
    {QLocale::Urdu, kAnyScript, kAnywhere, 720},
    {QLocale::Thai, kAnyScript, kAnywhere, 874},
    {QLocale::Vietnamese, kAnyScript, kAnywhere, 1258},
};

/// The characters of bytes 128 to 255; 0 where the page leaves one undefined.
using CHighHalf = std::array<char16_t, kByteCount - kFirstHighByte>;

/// The character of one byte; 0 when the page leaves it undefined.
char16_t CharacterOf(iconv_t conversion, char byte) {
    std::array<char, 16> utf8{};
    char* input = &byte;
    char* output = utf8.data();
    size_t inputLeft = 1;
    size_t outputLeft = utf8.size();
    iconv(conversion, nullptr, nullptr, nullptr, nullptr);
    // iconv holds Vietnamese letters back for a tone mark; the second call flushes them.
    if (iconv(conversion, &input, &inputLeft, &output, &outputLeft) != 0 ||
        iconv(conversion, nullptr, nullptr, &output, &outputLeft) != 0) {
        return 0;
    }
    const QString text = QString::fromUtf8(QByteArrayView(utf8.data(), output));
    return text.size() == 1 ? text[0].unicode() : u'\0';
}

/// False for a page that neither we nor the C library know.
bool FindHighHalf(int codePage, CHighHalf& half) {
    for (const CBuiltInPage& page : kBuiltIn) {
        if (page.codePage == codePage) {
            std::copy(page.highHalf.utf16(), page.highHalf.utf16() + half.size(), half.begin());
            return true;
        }
    }
    const QByteArray name = "CP" + QByteArray::number(codePage);
    iconv_t conversion = iconv_open("UTF-8", name.constData());
    // The C library reports failure by an address of all ones.
    if (reinterpret_cast<intptr_t>(conversion) == -1) {
        return false;
    }
    for (size_t i = 0; i < half.size(); ++i) {
        half[i] = CharacterOf(conversion, static_cast<char>(kFirstHighByte + i));
    }
    iconv_close(conversion);
    return true;
}

/// Of 16 bytes.
bool IsAscii(const char* bytes) {
    std::array<quint64, 2> words{};
    std::memcpy(words.data(), bytes, sizeof(words));
    return ((words[0] | words[1]) & 0x8080808080808080U) == 0;
}
}  // namespace

struct COemCodec::CTables {
    explicit CTables(const CHighHalf& half);

    std::array<QChar, kByteCount> toUtf16{};
    std::array<char, 65536> fromUtf16{};
};

COemCodec::CTables::CTables(const CHighHalf& half) {
    fromUtf16.fill(kSubstitute);
    const auto isFree = [this](char16_t character) {
        return character >= kFirstHighByte && fromUtf16[character] == kSubstitute;
    };
    const auto join = [this](int byte, char16_t character) {
        toUtf16[byte] = QChar(character);
        fromUtf16[character] = static_cast<char>(byte);
    };
    for (int byte = 0; byte < kFirstHighByte; ++byte) {
        join(byte, static_cast<char16_t>(byte));
    }
    std::array<bool, kByteCount> isJoined{};
    for (int byte = kFirstHighByte; byte < kByteCount; ++byte) {
        isJoined[byte] = isFree(half[byte - kFirstHighByte]);
        if (isJoined[byte]) {
            join(byte, half[byte - kFirstHighByte]);
        }
    }
    for (int byte = kFirstHighByte; byte < kByteCount; ++byte) {
        if (!isJoined[byte]) {
            const auto sameNumber = static_cast<char16_t>(byte);
            join(byte, isFree(sameNumber) ? sameNumber : kPrivateUse + sameNumber);
        }
    }
}

const COemCodec::CTables& COemCodec::TablesOf(int codePage) {
    static std::map<int, std::unique_ptr<const CTables>> tables;
    std::unique_ptr<const CTables>& known = tables[codePage];
    if (!known) {
        CHighHalf half{};
        if (!FindHighHalf(codePage, half)) {
            FindHighHalf(kFallbackPage, half);
        }
        known = std::make_unique<const CTables>(half);
    }
    return *known;
}

COemCodec::COemCodec(int codePage) : m_tables(&TablesOf(codePage)) {}

int COemCodec::CodePageOf(const QLocale& locale) {
    for (const CLocalePage& row : kLocalePages) {
        if (row.language == locale.language() &&
            (row.script == kAnyScript || row.script == locale.script()) &&
            (row.territory == kAnywhere || row.territory == locale.territory())) {
            return row.codePage;
        }
    }
    return kFallbackPage;
}

QString COemCodec::Decode(QByteArrayView bytes) const {
    QString text(bytes.size(), Qt::Uninitialized);
    DecodeTo(text.data(), bytes);
    return text;
}

QByteArray COemCodec::Encode(QStringView text) const {
    QByteArray bytes(text.size(), Qt::Uninitialized);
    EncodeTo(bytes.data(), text);
    return bytes;
}

void COemCodec::DecodeTo(QChar* units, QByteArrayView bytes) const {
    // Nearly all text is ASCII, which every code page maps to itself.
    constexpr qsizetype kBlock = 16;
    const char* at = bytes.begin();
    const char* const end = bytes.end();
    while (at != end) {
        const qsizetype block = std::min<qsizetype>(end - at, kBlock);
        if (block == kBlock && IsAscii(at)) {
            for (qsizetype i = 0; i < kBlock; ++i) {
                units[i] = QLatin1Char(at[i]);
            }
        } else {
            for (qsizetype i = 0; i < block; ++i) {
                units[i] = m_tables->toUtf16[static_cast<uchar>(at[i])];
            }
        }
        at += block;
        units += block;
    }
}

void COemCodec::EncodeTo(char* bytes, QStringView text) const {
    for (const QChar unit : text) {
        *bytes++ = m_tables->fromUtf16[unit.unicode()];
    }
}
