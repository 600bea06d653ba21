#include "support/charset.h"

#include <iconv.h>
#include <langinfo.h>
#include <locale.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "support/ascii.h"
#include "support/message.h"
#include "support/text_buffer.h"

namespace tagmend {
namespace {

constexpr char utf16_name[] = "UTF-16LE";
constexpr char default_local_name[] = "ISO-8859-1";

/// A direction of conversion as its messages name it.
struct ConversionWords {
  const char* kind;   ///< stands before "character string"
  const char* close;  ///< what went wrong when the descriptor did not close
};

constexpr ConversionWords from_utf16_words{"", "closing character convsersion"};
constexpr ConversionWords to_utf16_words{"", "clsoing character convsersion"};
constexpr ConversionWords iptc_words{"IPTC ", "closing character conversion"};
constexpr ConversionWords exif_words{"EXIF ", "closing character conversion"};

/// glibc and POSIX agree that a failed open gives the address of all ones.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast)
bool is_open(iconv_t descriptor) { return reinterpret_cast<std::intptr_t>(descriptor) != -1; }

/// Converts the whole input; returns how many bytes of the output were written.
std::size_t convert(const char* to, const char* from, ByteSpan input, std::span<char> output,
                    const ConversionWords& words) {
  constexpr auto failed = static_cast<std::size_t>(-1);
  iconv_t descriptor = iconv_open(to, from);
  if (!is_open(descriptor)) {
    print_warning("iconv_open error: %s\n", std::strerror(errno));
    return 0;
  }
  // iconv never writes to its input; its type is older than const.
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
  char* next = const_cast<char*>(text_of(input).data());
  std::size_t left = input.size();
  char nothing = '\0';
  char* end = output.empty() ? &nothing : output.data();
  std::size_t room = output.size();
  bool converted = iconv(descriptor, &next, &left, &end, &room) != failed;
  int error = errno;
  // Sets with shift states need their closing sequence, also behind a text that was cut.
  if (iconv(descriptor, nullptr, nullptr, &end, &room) == failed && converted) {
    converted = false;
    error = errno;
  }
  if (!converted) {
    print_warning("Warning: Error converting %scharacter string: %s\n", words.kind,
                  std::strerror(error));
  }
  if (iconv_close(descriptor) != 0) {
    print_warning("Warning: Error %s descriptor: %s\n", words.close, std::strerror(errno));
  }
  return output.size() - room;
}

/// The same with the last byte of the output kept for the terminator; returns bytes written + 1.
std::size_t convert_terminated(const char* to, const char* from, ByteSpan input,
                               std::span<char> output, const ConversionWords& words) {
  if (output.empty()) {
    return 0;
  }
  const std::size_t written = convert(to, from, input, output.first(output.size() - 1), words);
  output[written] = '\0';
  return written + 1;
}

/// Copies as many bytes as fit; returns the input's length.
std::size_t copy_plain(ByteSpan input, std::span<char> output) {
  const std::size_t count = std::min(input.size(), output.size());
  std::ranges::copy(text_of(input.first(count)), output.begin());
  return input.size();
}

bool is_set(const CharsetName& name) { return name[0] != '\0'; }

/// The code set of the locale that the environment names; of the C locale when there is no such.
/// The program's own locale stays the C locale, so that letter classes never depend on the user's.
void set_from_locale(CharsetName& destination) {
  const locale_t locale = newlocale(LC_CTYPE_MASK, "", locale_t{});
  if (locale == locale_t{}) {
    copy_text(destination, nl_langinfo(CODESET));
    return;
  }
  copy_text(destination, nl_langinfo_l(CODESET, locale));
  freelocale(locale);
}

void init_local_name() {
  constexpr char variable[] = "ORVALE_CS_LOCAL";
  CharsetName& name = library_settings.local_charset;
  const char* const value = std::getenv(variable);
  if (value == nullptr) {
    copy_text(name, default_local_name);
    trace(0, "Environment variable %s not set, using default character set for locale: %s\n",
          variable, name.data());
    return;
  }
  cs_set_name(name, value);
  if (std::string_view(name.data()) == "DEFAULT") {
    set_from_locale(name);
    trace(0, "Environment variable %s='%s', using locale default of '%s'\n", variable, "DEFAULT",
          name.data());
  } else {
    trace(0, "Environment variable %s='%s'\n", variable, name.data());
  }
}

void init_optional_name(CharsetName& name, const char* variable) {
  if (const char* const value = std::getenv(variable); value != nullptr) {
    cs_set_name(name, value);
  }
}

}  // namespace

void cs_init() {
  library_settings = LibrarySettings{};
  const char* const unicode = std::getenv("ORVALE_UNICODE_COMMENT");
  library_settings.unicode_comment = unicode != nullptr && (unicode[0] == 'y' || unicode[0] == 'Y');
  init_local_name();
  init_optional_name(library_settings.exif_charset, "ORVALE_CS_EXIF");
  init_optional_name(library_settings.iptc_charset, "ORVALE_CS_IPTC");
}

bool cs_valid(const char* charset) {
  iconv_t descriptor = iconv_open(charset, utf16_name);
  if (!is_open(descriptor)) {
    return false;
  }
  iconv_close(descriptor);
  return true;
}

void cs_set_name(CharsetName& destination, std::string_view name) {
  copy_text(destination, name);
  std::ranges::transform(destination, destination.begin(), to_upper);
}

std::size_t cs_from_utf16(ByteSpan input, std::span<char> output) {
  return convert_terminated(library_settings.local_charset.data(), utf16_name, input, output,
                            from_utf16_words);
}

std::size_t cs_to_utf16(std::string_view input, std::span<std::uint8_t> output) {
  return convert(utf16_name, library_settings.local_charset.data(), bytes_of(input),
                 characters_of(output), to_utf16_words);
}

std::size_t cs_iptc_to_local(ByteSpan input, std::span<char> output) {
  if (is_set(library_settings.iptc_charset)) {
    return convert_terminated(library_settings.local_charset.data(),
                              library_settings.iptc_charset.data(), input, output, iptc_words);
  }
  if (output.empty()) {
    return 0;
  }
  const std::size_t count = std::min(input.size(), output.size() - 1);
  copy_plain(input, output.first(count));
  output[count] = '\0';
  return count + 1;
}

std::size_t cs_local_to_iptc(std::string_view input, std::span<std::uint8_t> output) {
  if (is_set(library_settings.iptc_charset)) {
    return convert(library_settings.iptc_charset.data(), library_settings.local_charset.data(),
                   bytes_of(input), characters_of(output), iptc_words);
  }
  return copy_plain(bytes_of(input), characters_of(output));
}

std::size_t cs_exif_to_local(ByteSpan input, std::span<char> output) {
  if (is_set(library_settings.exif_charset)) {
    return convert_terminated(library_settings.local_charset.data(),
                              library_settings.exif_charset.data(), input, output, exif_words);
  }
  return copy_plain(input, output);
}

std::size_t cs_local_to_exif(std::string_view input, std::span<std::uint8_t> output) {
  if (is_set(library_settings.exif_charset)) {
    return convert(library_settings.exif_charset.data(), library_settings.local_charset.data(),
                   bytes_of(input), characters_of(output), exif_words);
  }
  return copy_plain(bytes_of(input), characters_of(output));
}

}  // namespace tagmend
