#include "plainCopy.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

namespace {

// Two pages of storage, the second of which nobody may touch.
class LastPage {
public:
  LastPage() : size(static_cast<size_t>(sysconf(_SC_PAGESIZE))) {
    void *pages = mmap(nullptr, 2 * size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pages == MAP_FAILED) return;
    bytes = static_cast<char *>(pages);
    if (mprotect(bytes + size, size, PROT_NONE) == 0) end = bytes + size;
  }
  ~LastPage() {
    if (bytes != nullptr) munmap(bytes, 2 * size);
  }
  LastPage(const LastPage &) = delete;
  LastPage &operator=(const LastPage &) = delete;

  char *end = nullptr; // of what may be touched; null: there is no storage

private:
  size_t size;
  char *bytes = nullptr;
};

// What stands behind the NUL must neither be needed nor be taken for a part of the name.
TEST(CopyName, EndsAtTheNulWhereverTheNameLies) {
  const LastPage page;
  ASSERT_NE(nullptr, page.end);
  for (size_t length = 0; length < 40; length++) {
    for (size_t behind = 0; behind < 40; behind++) {
      SCOPED_TRACE(std::to_string(length) + " bytes, and " + std::to_string(behind) + " behind them");
      char *const name = page.end - behind - length - 1;
      for (size_t i = 0; i < length; i++)
        name[i] = static_cast<char>('a' + i % 26);
      name[length] = '\0';
      memset(name + length + 1, 'z', behind);
      char to[rt::longName + 1];
      memset(to, '#', sizeof to);
      const char *const end = rt::copyName(to, name);
      EXPECT_EQ('#', to[rt::longName]);
      if (length < rt::longName) {
        ASSERT_EQ(to + length, end);
        EXPECT_EQ(std::string_view(name, length), std::string_view(to, length));
      } else {
        EXPECT_EQ(nullptr, end);
      }
    }
  }
}

bool isPrintable(unsigned char byte) { return byte >= 0x20 && byte < 0x80; }
// With wide words white space needs no second look.
bool isTextOfXml(unsigned char byte) {
  return isPrintable(byte) || (sizeof(rt::WidestWord) == 16 && byte != 0 && strchr("\t\n\r", byte) != nullptr);
}
bool isPlainInMarkup(unsigned char byte) { return isPrintable(byte) && strchr("\"&<>", byte) == nullptr; }
bool isPlainInContent(unsigned char byte) { return byte == '\n' || isPlainInMarkup(byte); }

template <class Kind> void expectKind(bool (*holds)(unsigned char)) {
  for (size_t length = 1; length < 40; length++) {
    for (size_t at = 0; at < length; at++) {
      for (int value = 0; value < 256; value++) {
        std::string text(length, 'x');
        text[at] = static_cast<char>(value);
        std::string to(length, '#');
        const bool plain = rt::copyIf<Kind>(to.data(), text.data(), length);
        ASSERT_EQ(holds(static_cast<unsigned char>(value)), plain) << length << " " << at << " " << value;
        ASSERT_TRUE(!plain || text == to) << text;
      }
    }
  }
}

TEST(CopyIf, TakesWhatIsOfItsKind) {
  expectKind<rt::TextOfXml>(isTextOfXml);
  expectKind<rt::PlainInMarkup>(isPlainInMarkup);
  expectKind<rt::PlainInContent>(isPlainInContent);
}

} // namespace
