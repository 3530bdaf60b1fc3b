# The two commands are `make run` and `make test`; both install what is missing first. CMake does the work.
SHELL := /bin/sh
CASOS ?=
CAPTURAS ?=
SEGUNDOS ?= 60
prefix ?= /usr/local

.PHONY: run build test bench lint install paquete prueba-paquete screenshots clean asan tsan fuzz demo

run:
	@scripts/ejecuta

build:
	@scripts/instala construir
	@scripts/compila release programas

demo:
	@scripts/instala construir pruebas
	@scripts/compila release programas
	@scripts/demo

# CASOS=regex runs only the tests whose name matches.
test:
	@scripts/instala construir pruebas
	@scripts/compila release all
	@scripts/prueba release '$(CASOS)'

bench:
	@scripts/instala construir pruebas banco
	@scripts/compila release all
	@scripts/banco

lint:
	@scripts/instala construir lint
	@scripts/lint

asan tsan:
	@scripts/instala construir pruebas
	@scripts/compila $@ all
	@scripts/prueba $@ '$(CASOS)'

fuzz:
	@scripts/instala construir lint
	@scripts/fuzz $(SEGUNDOS)

install: build
	@cmake --install build --prefix $(prefix)

# The Debian package, in build/; prueba-paquete installs it on a bare Debian 12 and has it read there (root, network).
paquete:
	@scripts/instala construir paquete
	@scripts/compila release programas
	@cd build && cpack --config CPackConfig.cmake

prueba-paquete: paquete
	@scripts/instala pruebas
	@packaging/prueba-paquete

# The pictures of docs/pictures; CAPTURAS="name ..." takes only those. Look at them before they are committed.
screenshots:
	@scripts/instala construir pruebas
	@scripts/compila release programas
	@/usr/bin/python3 tests/e2e/capturas.py $(CAPTURAS)

clean:
	rm -rf build build-dev build-asan build-tsan build-fuzz build-lint
