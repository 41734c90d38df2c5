# Entry points. `make test` and `make run` install what is missing first.
.PHONY: setup test check run bench bench-engine fuzz fault format clean

JOBS ?= $(shell nproc)

setup:
	@scripts/setup.sh

# The whole suite: plain, ASan+UBSan, TSan, and a fuzz smoke run.
test: setup
	@scripts/test-all.sh

# Quick loop for development: the plain build and its tests only.
check: setup
	@cmake --preset default >/dev/null
	@cmake --build --preset default -j $(JOBS)
	@ctest --preset default

run: setup
	@scripts/run.sh

bench: setup
	@scripts/bench.sh

# The engine side by side with libyuv, libswscale and memcpy.
bench-engine: setup
	@cmake --preset default >/dev/null
	@cmake --build --preset default -j $(JOBS) --target bench_engine
	@find build/default/bench -type f -name bench_engine -exec {} \;

fuzz: setup
	@scripts/fuzz.sh $(or $(SECONDS),60)

# Kills a process saving a project at random moments for SECONDS (default
# 60) and checks after every kill that the last completed save still opens.
fault: setup
	@cmake --preset default >/dev/null
	@cmake --build --preset default -j $(JOBS) --target test_project_save_fault
	@TACHYRUN_FAULT_SECONDS=$(or $(SECONDS),60) build/default/tests/project/test_project_save_fault

format:
	@git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	rm -rf build
