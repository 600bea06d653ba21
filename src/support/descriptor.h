// Descriptor: an open file descriptor that its owner closes by going out of scope. For descriptors
// whose close cannot lose anything, such as those of directories.
#pragma once

#include <unistd.h>

#include <utility>

namespace tagmend {

struct Descriptor {
  int number = -1;  ///< negative when none is open

  Descriptor() = default;
  explicit Descriptor(int opened) : number(opened) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  Descriptor(Descriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number, other.number);
    return *this;
  }
  ~Descriptor() {
    if (is_open()) {
      close(number);
    }
  }

  [[nodiscard]] bool is_open() const { return number >= 0; }
};

}  // namespace tagmend
