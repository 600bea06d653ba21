# A thin front over the CMake presets. `make try` and `make check` need a Debian machine with nothing
# but make: they install the packages that are missing.
PREFIX ?= /usr/local
JOBS ?= $(shell nproc 2>/dev/null || echo 2)

.PHONY: all try check sanitize clang format format-check bench install clean
.PHONY: build-tools test-tools clang-tools format-tools bench-tools

all: build-tools
	cmake --preset release -DTAGMEND_TESTS=OFF
	cmake --build --preset release --parallel $(JOBS)

try: all
	tools/try.sh build

check: build-tools test-tools
	cmake --preset dev
	cmake --build --preset dev --parallel $(JOBS)
	tools/try.sh build-dev
	ctest --preset dev --parallel $(JOBS)

sanitize: build-tools test-tools
	cmake --preset sanitize
	cmake --build --preset sanitize --parallel $(JOBS)
	ctest --preset sanitize --parallel $(JOBS)

clang: build-tools test-tools clang-tools
	cmake --preset clang
	cmake --build --preset clang --parallel $(JOBS)

format: format-tools
	find src tests tools -name '*.h' -o -name '*.cpp' | xargs clang-format-14 -i

format-check: format-tools
	find src tests tools -name '*.h' -o -name '*.cpp' | xargs clang-format-14 --dry-run --Werror

bench: all bench-tools
	tests/bench/bench.sh build/tagmend

install: all
	cmake --install build --prefix "$(PREFIX)"

clean:
	rm -rf build build-dev build-clang build-sanitize

build-tools:
	@tools/install-missing.sh cmake:cmake ninja:ninja-build g++:g++

test-tools:
	@tools/install-missing.sh /usr/include/gtest/gtest.h:libgtest-dev

clang-tools:
	@tools/install-missing.sh clang++:clang

format-tools:
	@tools/install-missing.sh clang-format-14:clang-format-14

bench-tools:
	@tools/install-missing.sh python3:python3 strace:strace

# The Debian package, in build/.
.PHONY: package
package: all
	@tools/install-missing.sh dpkg-shlibdeps:dpkg-dev
	cd build && cpack
