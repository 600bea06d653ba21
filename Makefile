# A thin front over the CMake presets. `make try` and `make check` need a Debian machine with nothing
# but make: they install the packages that are missing.
PREFIX ?= /usr/local
JOBS ?= $(shell nproc 2>/dev/null || echo 2)

FUZZ_SECONDS ?= 60
FUZZ_SEED ?= 0

.PHONY: all try check sanitize fuzz clang format format-check bench install clean
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

sanitize: build-tools test-tools clang-tools
	cmake --preset sanitize
	cmake --build --preset sanitize --parallel $(JOBS)
	ctest --preset sanitize --parallel $(JOBS)

fuzz: build-tools test-tools clang-tools
	cmake --preset sanitize
	cmake --build --preset fuzz --parallel $(JOBS)
	fuzz/run.sh build-sanitize $(FUZZ_SECONDS) $(FUZZ_SEED)

clang: build-tools test-tools clang-tools
	cmake --preset clang
	cmake --build --preset clang --parallel $(JOBS)

format: format-tools
	find src tests tools fuzz bench -name '*.h' -o -name '*.cpp' | xargs clang-format-14 -i

format-check: format-tools
	find src tests tools fuzz bench -name '*.h' -o -name '*.cpp' | xargs clang-format-14 --dry-run --Werror

bench: all bench-tools
	bench/bench.py build/tagmend

install: all
	cmake --install build --prefix "$(PREFIX)"

clean:
	rm -rf build build-dev build-clang build-sanitize

build-tools:
	@tools/install-missing.sh cmake:cmake ninja:ninja-build g++:g++

test-tools:
	@tools/install-missing.sh /usr/include/gtest/gtest.h:libgtest-dev python3:python3

clang-tools:
	@tools/install-missing.sh clang++:clang \
	  '/usr/lib/llvm-14/lib/clang/*/lib/linux/libclang_rt.fuzzer-*.a:libclang-rt-14-dev'

format-tools:
	@tools/install-missing.sh clang-format-14:clang-format-14

bench-tools:
	@tools/install-missing.sh python3:python3 strace:strace

# The Debian package, in build/.
.PHONY: package
package: all
	@tools/install-missing.sh dpkg-shlibdeps:dpkg-dev
	cd build && cpack

# Static checks, and the whole runs under valgrind: both take the files or tests named, or all.
.PHONY: tidy cppcheck valgrind tidy-tools cppcheck-tools valgrind-tools
TIDY_FILES ?= (src|tools|tests|fuzz)/
VALGRIND_TESTS ?= *

tidy: build-tools test-tools clang-tools tidy-tools
	cmake --preset sanitize
	run-clang-tidy-14 -quiet -p build-sanitize -j $(JOBS) '^$(CURDIR)/$(TIDY_FILES)'

# Tests are read with cppcheck's own description of GoogleTest in place of its headers.
cppcheck: cppcheck-tools
	cppcheck --quiet --error-exitcode=1 --inline-suppr -j $(JOBS) \
	  --std=c++20 --language=c++ --library=googletest --enable=warning,performance,portability \
	  -D'TAGMEND_PROGRAM="tagmend"' -D'TAGMEND_DOCS="docs"' \
	  -I src -I tests src tools tests fuzz bench

# Any error that valgrind finds in a run gives it a status that no test expects. Blocks that something
# still leads to at the end are no leaks: a run that ends itself early leaves what its stack holds.
valgrind: build-tools test-tools valgrind-tools
	cmake --preset dev
	cmake --build --preset dev --parallel $(JOBS) --target test_run
	TAGMEND_RUN_PREFIX='valgrind --quiet --leak-check=full --show-leak-kinds=definite,indirect --errors-for-leak-kinds=definite,indirect --error-exitcode=99' \
	  build-dev/tests/test_run --gtest_brief=1 --gtest_filter='$(VALGRIND_TESTS)'

tidy-tools:
	@tools/install-missing.sh run-clang-tidy-14:clang-tidy-14

cppcheck-tools:
	@tools/install-missing.sh cppcheck:cppcheck

valgrind-tools:
	@tools/install-missing.sh valgrind:valgrind /usr/lib/debug/.build-id:libc6-dbg
