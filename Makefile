# Top-level entry points. `make` builds into build/, `make test` installs what is missing,
# builds and runs every test (plain, with sanitizers, and a short run of each fuzz target),
# `make demo` runs the demo.

JOBS ?= 2
BUILD ?= build
ASAN_BUILD ?= build-asan
FUZZ_BUILD ?= build-fuzz
# Seconds per fuzz target in `make test`; two run at a time.
FUZZ_SECONDS ?= 60
# A fixed seed makes the run in `make test` repeatable: what fails there fails here too.
FUZZ_SEED ?= 1
FUZZ_TARGETS = off ply obj stl pathset tcl
# The GL driver keeps data in dynamic thread-local storage. The sanitizer runtimes of GCC 12
# and Clang 14 sometimes mistake such a block for an old glibc's and read a bogus range from
# it, which crashes the leak checker's thread at exit; without that interception nothing is
# lost, since glibc allocates those blocks on the heap, where the checker sees them anyway.
ASAN_TEST_OPTIONS = detect_leaks=1:abort_on_error=1:intercept_tls_get_addr=0
CMAKE_FLAGS ?=

.PHONY: all build deps test test-plain test-asan test-fuzz demo bench clean

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
	$(MAKE) test-fuzz

test-plain: build
	cd $(BUILD) && ctest --output-on-failure -j$(JOBS)

test-asan: $(ASAN_BUILD)/CMakeCache.txt
	cmake --build $(ASAN_BUILD) -j$(JOBS)
	cd $(ASAN_BUILD) && ASAN_OPTIONS=$(ASAN_TEST_OPTIONS) \
	  LSAN_OPTIONS=suppressions=$(CURDIR)/tests/lsan.supp \
	  UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 ctest --output-on-failure -j$(JOBS)

$(FUZZ_BUILD)/CMakeCache.txt:
	cmake -S . -B $(FUZZ_BUILD) -DCMAKE_BUILD_TYPE=Debug -DSURFPATH_FUZZ=ON \
	  -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ $(CMAKE_FLAGS)

# Each target runs over its seeds (the small real meshes, the bad inputs) and what earlier
# runs kept, then mutates for FUZZ_SECONDS. A crash, a leak, an input slower than 10 s or one
# allocation over 256 MB fails; the input is kept in $(FUZZ_BUILD)/fuzz/artifacts.
test-fuzz: $(FUZZ_BUILD)/CMakeCache.txt
	cmake --build $(FUZZ_BUILD) -j$(JOBS)
	$(MAKE) -k -j$(JOBS) $(FUZZ_TARGETS:%=fuzz-run-%)

fuzz-run-%:
	@cd $(FUZZ_BUILD)/fuzz && rm -rf tmp/$* && mkdir -p corpus/$* artifacts/$* logs tmp/$* && \
	  TMPDIR=$$PWD/tmp/$* ASAN_OPTIONS=intercept_tls_get_addr=0 LSAN_OPTIONS=suppressions=$(CURDIR)/tests/lsan.supp \
	  ../bin/fuzz_$* -seed=$(FUZZ_SEED) -max_total_time=$(FUZZ_SECONDS) -timeout=10 -malloc_limit_mb=256 -rss_limit_mb=1024 \
	    -close_fd_mask=3 -print_final_stats=1 -artifact_prefix=$$PWD/artifacts/$*/ corpus/$* seeds/$* >logs/$*.log 2>&1 \
	  && echo "fuzz_$*: $$(grep -E '^#[0-9]+[[:space:]]+DONE' logs/$*.log)" \
	  || { tail -n 60 logs/$*.log; echo "fuzz_$*: FAILED, input in $(FUZZ_BUILD)/fuzz/artifacts/$*"; exit 1; }

demo: deps build
	$(BUILD)/bin/surfpath examples/demo.tcl $(BUILD)/data/meshes $(BUILD)/demo-output

bench: build
	$(BUILD)/bin/surfpath_bench
	$(BUILD)/bin/operations_bench
	$(BUILD)/bin/viewer_bench
	$(BUILD)/bin/editor_bench
	$(BUILD)/bin/crossing_bench
	$(BUILD)/bin/geodesic_bench

clean:
	rm -rf $(BUILD) $(ASAN_BUILD) $(FUZZ_BUILD)
