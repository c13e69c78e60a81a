# SPDX-License-Identifier: GPL-2.0-or-later
# The front door: each target installs the packages it needs, so git and make are enough to start.

configure = cmake --preset release
build = cmake --build --preset release

.PHONY: help demo test run screenshots bench install package format clean

help:
	@echo 'make demo    build, then edit and split the sample audio'
	@echo 'make test    build and run the tests'
	@echo 'make run     the desktop program'
	@echo 'make screenshots  pictures of the window: of each layout, and those of the manual'
	@echo 'make bench   build and run the benchmarks'
	@echo 'make install  build and install below prefix (/usr/local), or DESTDIR'
	@echo 'make package  build a Debian package'
	@echo 'make format  format the sources'
	@echo 'make clean   remove everything that was built'

# Only `test` needs what the tests are built with; whoever has that keeps the tests in the folder.
demo:
	scripts/install-packages build
	$(configure)
	$(build) --target corvelin-cli
	scripts/demo

test:
	scripts/install-packages build desktop test
	$(configure) -DCORVELIN_TESTS=ON
	$(build)
	ctest --preset release

run:
	scripts/install-packages build desktop
	$(configure)
	$(build) --target corvelin
	build/release/src/desktop/corvelin

screenshots:
	scripts/install-packages build desktop screenshots
	$(configure)
	$(build) --target corvelin
	scripts/screenshots build/release/src/desktop/corvelin build/screenshots

bench:
	scripts/install-packages build desktop bench
	$(configure)
	$(build) --target corvelin_bench corvelin_measuring_bench corvelin_view_bench corvelin_desktop_bench
	build/release/bench/corvelin_bench
	build/release/bench/corvelin_measuring_bench
	build/release/bench/corvelin_view_bench
	build/release/bench/corvelin_desktop_bench

prefix = /usr/local

install:
	scripts/install-packages build desktop
	$(configure)
	$(build) --target corvelin corvelin-cli manual_pages
	cmake --install build/release --prefix "$(prefix)"

package:
	scripts/install-packages build desktop package
	$(configure)
	$(build) --target corvelin corvelin-cli manual_pages
	cpack --config build/release/CPackConfig.cmake -B build/package
	lintian --fail-on error build/package/*.deb

format:
	scripts/install-packages check
	git ls-files -z '*.h' '*.cpp' | xargs -0 --no-run-if-empty clang-format -i

clean:
	rm -rf build
