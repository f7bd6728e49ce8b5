# SPDX-License-Identifier: GPL-3.0-or-later
# The two set-up commands: `make run` and `make test`. Both install what is missing first.
BUILD      ?= build
SAN_BUILD  ?= build-san
FUZZ_BUILD ?= build-fuzz
FUZZ_SECONDS ?= 20
GENERATOR  ?= Ninja
CMAKE_ARGS ?=

.PHONY: all deps configure build run test test-san fuzz-smoke bench format clean

all: build

deps:
	@scripts/install-deps

$(BUILD)/build.ninja: | deps
	cmake -S . -B $(BUILD) -G $(GENERATOR) -DCMAKE_BUILD_TYPE=Release $(CMAKE_ARGS)

configure: $(BUILD)/build.ninja

build: deps configure
	cmake --build $(BUILD)

run: build
	$(BUILD)/bin/wibbleton

# The Qt-free libraries under AddressSanitizer and UndefinedBehaviorSanitizer,
# a short run of each file reader's fuzzer, then every suite of the normal
# build, whose summary closes the output.
test: build
	$(MAKE) test-san
	$(MAKE) fuzz-smoke
	QT_QPA_PLATFORM=offscreen ctest --test-dir $(BUILD) --output-on-failure

test-san: deps
	cmake -S . -B $(SAN_BUILD) -G $(GENERATOR) -DCMAKE_BUILD_TYPE=Debug \
	    -DWIB_WITH_QT=OFF -DWIB_BENCH=OFF -DWIB_SANITIZE=ON
	cmake --build $(SAN_BUILD)
	ctest --test-dir $(SAN_BUILD) --output-on-failure

# The file readers' libFuzzer programs, built with clang and run for
# FUZZ_SECONDS each from the kept corpus; a crash fails the target and leaves
# its input in $(FUZZ_BUILD)/crashes/.
fuzz-smoke: deps
	CC=clang CXX=clang++ cmake -S . -B $(FUZZ_BUILD) -G $(GENERATOR) \
	    -DCMAKE_BUILD_TYPE=RelWithDebInfo -DWIB_WITH_QT=OFF -DWIB_BENCH=OFF \
	    -DWIB_SANITIZE=ON -DWIB_FUZZ=ON
	cmake --build $(FUZZ_BUILD) --target targa_fuzz bitmap_fuzz openraster_fuzz layered_fuzz wta_fuzz
	for reader in targa bitmap openraster layered wta; do \
	    mkdir -p $(FUZZ_BUILD)/corpus/$$reader $(FUZZ_BUILD)/crashes && \
	    $(FUZZ_BUILD)/bin/$${reader}_fuzz -max_total_time=$(FUZZ_SECONDS) -rss_limit_mb=2048 \
	        -print_final_stats=1 -artifact_prefix=$(FUZZ_BUILD)/crashes/ \
	        $(FUZZ_BUILD)/corpus/$$reader tests/fuzz/corpus/$$reader || exit 1; \
	done

bench: build
	@scripts/run-bench $(BUILD)/bin

format:
	find pixel core paint anim fileio plugins ui app tests bench -name '*.h' -o -name '*.cpp' | xargs clang-format -i

clean:
	rm -rf $(BUILD) $(SAN_BUILD) $(FUZZ_BUILD)
