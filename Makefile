# Top-level entry points. `make` builds into build/, `make test` installs what is missing,
# builds and runs every test (plain and with sanitizers), `make demo` runs the demo.

JOBS ?= 2
BUILD ?= build
ASAN_BUILD ?= build-asan
CMAKE_FLAGS ?=

.PHONY: all build deps test test-plain test-asan demo bench clean

all: build

$(BUILD)/CMakeCache.txt:
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo $(CMAKE_FLAGS)

build: $(BUILD)/CMakeCache.txt
	cmake --build $(BUILD) -j$(JOBS)

$(ASAN_BUILD)/CMakeCache.txt:
	cmake -S . -B $(ASAN_BUILD) -DCMAKE_BUILD_TYPE=Debug -DSURFPATH_SANITIZE=ON $(CMAKE_FLAGS)

deps:
	scripts/install-deps

test: deps
	$(MAKE) test-plain
	$(MAKE) test-asan

test-plain: build
	cd $(BUILD) && ctest --output-on-failure -j$(JOBS)

test-asan: $(ASAN_BUILD)/CMakeCache.txt
	cmake --build $(ASAN_BUILD) -j$(JOBS)
	cd $(ASAN_BUILD) && ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 \
	  LSAN_OPTIONS=suppressions=$(CURDIR)/tests/lsan.supp \
	  UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 ctest --output-on-failure -j$(JOBS)

demo: deps build
	$(BUILD)/bin/surfpath examples/demo.tcl $(BUILD)/data/meshes $(BUILD)/demo-output

bench: build
	$(BUILD)/bin/surfpath_bench
	$(BUILD)/bin/operations_bench
	$(BUILD)/bin/viewer_bench
	$(BUILD)/bin/editor_bench

clean:
	rm -rf $(BUILD) $(ASAN_BUILD)
