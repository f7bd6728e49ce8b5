# The two set-up commands: `make run` and `make test`. Both install what is missing first.
BUILD      ?= build
SAN_BUILD  ?= build-san
GENERATOR  ?= Ninja
CMAKE_ARGS ?=

.PHONY: all deps configure build run test test-san bench format clean

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

# Every suite of the normal build, then the Qt-free libraries again under
# AddressSanitizer and UndefinedBehaviorSanitizer.
test: build
	QT_QPA_PLATFORM=offscreen ctest --test-dir $(BUILD) --output-on-failure
	$(MAKE) test-san

test-san: deps
	cmake -S . -B $(SAN_BUILD) -G $(GENERATOR) -DCMAKE_BUILD_TYPE=Debug \
	    -DWIB_WITH_QT=OFF -DWIB_BENCH=OFF -DWIB_SANITIZE=ON
	cmake --build $(SAN_BUILD)
	ctest --test-dir $(SAN_BUILD) --output-on-failure

bench: build
	@scripts/run-bench $(BUILD)/bin

format:
	find pixel core paint anim plugins ui app tests bench -name '*.h' -o -name '*.cpp' | xargs clang-format -i

clean:
	rm -rf $(BUILD) $(SAN_BUILD)
