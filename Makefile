# The commands of a newcomer. Each installs what is missing first (tools/setup.sh).
BUILD := build/release
JOBS ?= $(shell nproc)
EXAMPLE := build/example

.PHONY: all setup build run test check-all format bench install package clean

all: build

setup:
	@tools/setup.sh

build: setup
	@cmake --preset release >build-configure.log 2>&1 || { cat build-configure.log; rm -f build-configure.log; exit 1; }
	@rm -f build-configure.log
	cmake --build $(BUILD) --target zorvane --target zorvane-convert --target zorvane-window -j $(JOBS)

# The main job on the example pair: the comparison on the terminal, and all four reports.
run: build
	@mkdir -p $(EXAMPLE)
	@$(BUILD)/zorvane compare examples/lease-2025.rtf examples/lease-2026.rtf --letters -q \
	    -o $(EXAMPLE)/lease.html -o $(EXAMPLE)/lease.doc -o $(EXAMPLE)/lease.txt -o $(EXAMPLE)/lease.csv; \
	    test $$? -eq 1
	@$(BUILD)/zorvane compare examples/lease-2025.rtf examples/lease-2026.rtf; test $$? -eq 1
	@echo "Reports: $(EXAMPLE)/lease.html, lease.doc, lease.txt, lease.csv"

test: setup
	tools/test.sh

check-all: setup
	tools/check_all.sh

format:
	git ls-files '*.cpp' '*.h' | xargs clang-format -i

bench: build
	tools/bench.sh

install: build
	cmake --install $(BUILD) --strip --prefix $(or $(PREFIX),/usr/local)

# Debian packages in build/release/packages.
package: build
	cd $(BUILD) && cpack -B packages >cpack.log || { cat cpack.log; exit 1; }
	@ls $(BUILD)/packages/*.deb

clean:
	rm -rf build
