# The few commands a person types; CMakePresets.json holds what they build.

JOBS := $(shell nproc)
PYTHON := /usr/bin/python3
KYIMG := build/release/bin/kyimg
DEMO := build/demo
SAMPLE := $(DEMO)/sample_bayer8_grbg_1280x960.raw
DEMO_CONVERT := $(KYIMG) convert $(SAMPLE) --type 0x20010 --size 1280x960 --bayer GRBG --to RGB24

.PHONY: help demo test test-windows test-aarch64 test-nehalem packages wheel test-python bench build-peers bench-peers \
	bench-growth bench-windows docs docs-peers guess-report format check-format deps deps-cross

help:
	@echo 'make demo          render a sample camera frame and convert it to PNGs'
	@echo 'make test          build everything and run all tests'
	@echo 'make test-windows  the same for Windows, with MinGW-w64 and Wine; make test-aarch64: for 64-bit ARM, with qemu;'
	@echo '                   make test-nehalem: for a CPU without AVX, with qemu'
	@echo 'make wheel         the package for Python, in build/wheel;  make test-python: and its tests, in a fresh environment'
	@echo 'make packages      Debian packages, a wheel, a zip for Windows and a tarball of the sources, in build/packages'
	@echo 'make bench         build and run the benchmarks (BENCH_ARGS="--filter=..." is passed on); make bench-windows: for'
	@echo '                   Windows, with MinGW-w64 and Wine'
	@echo 'make bench-peers   the same conversions of other libraries beside it; make bench-growth: from small images to huge ones.'
	@echo '                   Tables and plots in build/peers, which make docs-peers puts into docs/benchmarks.md'
	@echo 'make docs          write docs/formats.md anew, which follows from the library'
	@echo 'make guess-report  write docs/guess.md anew, with the frames of cameras in FRAMES'
	@echo 'make format        format all sources;  make check-format: only say which would change'
	@echo 'make deps          install the packages that are missing; the commands above do so by themselves'

# DEPENDENCIES=installed: on systems without apt, where somebody else has seen to it.
deps:
ifneq ($(DEPENDENCIES),installed)
	@scripts/install-dependencies
endif

deps-cross:
	@scripts/install-dependencies --cross
	@scripts/fetch-sources >/dev/null

demo: deps
	cmake --preset release
	cmake --build --preset release --target kyimg make-sample-frame
	@mkdir -p $(DEMO)
	build/release/bin/make-sample-frame $(DEMO)
	$(DEMO_CONVERT) --gain 1.9,1.0,1.6 -o $(DEMO)/bilinear.png
	$(DEMO_CONVERT) --gain 1.9,1.0,1.6 --demosaic nearest -o $(DEMO)/nearest.png
	$(DEMO_CONVERT) -o $(DEMO)/unbalanced.png
	@echo
	@echo 'A raw frame, as a colour camera delivers it, became these pictures:'
	@echo '  $(CURDIR)/$(DEMO)/bilinear.png    bilinear demosaicing, white balanced'
	@echo '  $(CURDIR)/$(DEMO)/nearest.png     nearest-neighbour demosaicing, white balanced'
	@echo '  $(CURDIR)/$(DEMO)/unbalanced.png  bilinear demosaicing, colours as the sensor sees them'

test: deps
	cmake --preset release
	cmake --build --preset release
	ctest --preset release -j $(JOBS)

test-windows: deps-cross
	cmake --preset windows
	cmake --build --preset windows
	scripts/under-wine ctest --preset windows -j $(JOBS)

test-aarch64 test-nehalem: test-%: deps-cross
	cmake --preset $*
	cmake --build --preset $*
	ctest --preset $* -j $(JOBS)

wheel:
	@scripts/install-dependencies --python
	cmake --preset release
	cmake --build --preset release --target KyImgLib
	rm -rf build/wheel
	KYIMGLIB_BUILD_DIR=$(CURDIR)/build/release $(PYTHON) -m pip wheel --quiet --no-build-isolation --no-deps --no-index \
		--wheel-dir build/wheel ./python
	@ls build/wheel/*

test-python: wheel
	cmake --build --preset release --target kyimg
	PYTHON=$(PYTHON) scripts/test-python build/wheel/*.whl

packages: deps-cross
	scripts/make-packages build/packages

bench:
	@scripts/install-dependencies --bench
	cmake --preset release -DKYIMGLIB_BUILD_BENCHMARKS=ON
	cmake --build --preset release --target kyimglib-benchmarks
	build/release/bin/kyimglib-benchmarks $(BENCH_ARGS)

# A run holds the other libraries to one CPU level, and writes its table beside its JSON file.
PEERS := build/peers
PEER_LEVELS := avx2 $(if $(shell grep -wm1 avx512_vbmi2 /proc/cpuinfo),avx512vbmi)
RUN_PEERS = build/release/bin/kyimglib-peers $(2) $(BENCH_ARGS) --benchmark_out=$(PEERS)/$(1).json >$(PEERS)/$(1).md

build-peers:
	@scripts/install-dependencies --peers
	cmake --preset release -DKYIMGLIB_BUILD_BENCHMARKS=ON -DKYIMGLIB_BUILD_PEERS=ON
	cmake --build --preset release --target kyimglib-peers
	@mkdir -p $(PEERS)

bench-peers: build-peers
	$(foreach level,$(PEER_LEVELS),$(call RUN_PEERS,$(level),--level $(level)) &&) true
	@cat $(PEER_LEVELS:%=$(PEERS)/%.md)
	scripts/plot-peers $(PEER_LEVELS:%=$(PEERS)/%.json) --out $(PEERS)

bench-growth: build-peers
	$(call RUN_PEERS,growth,--growth)
	@cat $(PEERS)/growth.md
	scripts/plot-peers $(PEERS)/growth.json --out $(PEERS)

# What the two above have measured last.
docs-peers:
	scripts/plot-peers $(PEERS)/*.json --out docs/images --document docs/benchmarks.md

bench-windows: deps-cross
	cmake --preset windows -DKYIMGLIB_BUILD_BENCHMARKS=ON
	cmake --build --preset windows --target kyimglib-benchmarks
	scripts/under-wine wine build/windows/bin/kyimglib-benchmarks.exe $(BENCH_ARGS)

docs: deps
	cmake --preset release
	cmake --build --preset release --target kyimg
	$(KYIMG) reference >build/formats.md
	mv build/formats.md docs/formats.md

guess-report:
	@scripts/install-dependencies --guess
	cmake --preset release
	cmake --build --preset release --target kyimg
	scripts/guess-report $(KYIMG) '$(FRAMES)' >build/guess.md
	mv build/guess.md docs/guess.md

format:
	@scripts/format

check-format:
	@scripts/format --check
