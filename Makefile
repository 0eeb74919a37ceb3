# make run     - install what is missing, build, start the game
# make test    - install what is missing, build, run every test
# make package - build a Debian package of the game (build/quorvel_*.deb)
# make bench   - build and run the benchmarks
# make bench-window - the window against its floor at three scales, first paint, memory (Xvfb)
# make soak    - a long run of the randomised harness (SOAK_SEEDS=1-10 SOAK_STEPS=50000)
# make mutants - plant each fault of tools/mutants/faults.txt in turn; tests likeliest first
# make web     - the game as one HTML page that plays offline: build-web/quorvel.html
# make soak-web - the page given random input in headless Chromium (SOAK_INPUTS=100000 SOAK_SEED=1)
BUILD ?= build
CMAKE_FLAGS ?=
JOBS ?= $(shell nproc)

# Debian packages the build and the tests need (make deps PACKAGES="..." installs others).
PACKAGES := cmake ninja-build g++ make libgtest-dev libbenchmark-dev qt6-base-dev qt6-svg-dev

.PHONY: deps configure build run test bench bench-window soak soak-web package mutants web clean

deps:
	@missing=""; for p in $(PACKAGES); do \
	  dpkg-query -W -f='$${Status}' $$p 2>/dev/null | grep -q 'install ok installed' || missing="$$missing $$p"; \
	done; \
	if [ -n "$$missing" ]; then \
	  echo "Installing:$$missing"; \
	  SUDO=""; [ "$$(id -u)" -ne 0 ] && SUDO=sudo; \
	  $$SUDO apt-get update -qq && $$SUDO env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq $$missing; \
	fi

configure: deps
	cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo $(CMAKE_FLAGS)

build: configure
	cmake --build $(BUILD) -j $(JOBS)

run: build
	./$(BUILD)/app/quorvel

# The page's tests build it with emscripten (Node runs its rules) and play it in headless
# Chromium through chromium-driver and Selenium: the README's test command installs them too.
WEB_TEST_PACKAGES := emscripten librsvg2-bin chromium chromium-driver python3-selenium
test: PACKAGES += $(WEB_TEST_PACKAGES)
test: build
	ctest --test-dir $(BUILD) --output-on-failure -j $(JOBS)

bench: build
	./$(BUILD)/bench/quorvel_bench

# Under its own Xvfb, large enough for the window at scale 1.5 (xvfb is packaged as xvfb);
# callgrind counts the instructions.
PAIRS ?= 1
bench-window: PACKAGES += xvfb valgrind
bench-window: build
	xvfb-run -a -s '-screen 0 2000x1300x24' bench/window.sh $(BUILD) $(PAIRS)

SOAK_SEEDS ?= 1-10
SOAK_STEPS ?= 50000
soak: build
	QUORVEL_HARNESS_SEEDS=$(SOAK_SEEDS) QUORVEL_HARNESS_STEPS=$(SOAK_STEPS) \
	  nice -n 10 ./$(BUILD)/tests/quorvel_tests --gtest_filter='Harness.*'

# dpkg-shlibdeps (dpkg-dev) finds the libraries the package depends on.
package: PACKAGES += dpkg-dev
package: build
	cmake --build $(BUILD) --target package

# The mutation check is a Python 3 script; for the page's faults it builds the page with
# emscripten and plays it in headless Chromium, as the page's tests do.
mutants: PACKAGES += python3 $(WEB_TEST_PACKAGES)
mutants: deps
	python3 tools/mutants/mutants.py $(MUTANTS)

# The page is the game built with emscripten. Emscripten's tools look for their Node modules
# (acorn) where Debian puts them, which a Node from elsewhere does not search by itself.
WEB_BUILD ?= build-web
WEB_TARGETS ?= quorvel_page
web: PACKAGES += emscripten librsvg2-bin
web: deps
	export NODE_PATH=/usr/share/nodejs$${NODE_PATH:+:$$NODE_PATH}; \
	emcmake cmake -S . -B $(WEB_BUILD) -G Ninja -DCMAKE_BUILD_TYPE=Release -DQUORVEL_APP=OFF \
	  -DQUORVEL_BENCH=OFF -DBUILD_TESTING=OFF $(CMAKE_FLAGS) && \
	cmake --build $(WEB_BUILD) -j $(JOBS) --target $(WEB_TARGETS)

# The page's soak: random taps, clicks, keys, resizes and turns, each match's end replayed under
# Node. A journal that parts from its replay is kept in $(WEB_BUILD)/soak/.
SOAK_INPUTS ?= 100000
SOAK_SEED ?= 1
soak-web: PACKAGES += chromium chromium-driver python3-selenium
soak-web: WEB_TARGETS = quorvel_page quorvel_replay
soak-web: web
	nice -n 10 /usr/bin/python3 tests/web/soak_test.py $(WEB_BUILD)/quorvel.html $(WEB_BUILD)/soak \
	  --inputs $(SOAK_INPUTS) --seed $(SOAK_SEED)

clean:
	rm -rf $(BUILD) $(WEB_BUILD)
