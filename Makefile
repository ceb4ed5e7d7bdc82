# The project's commands. They install what is missing, so a bare Debian machine needs only make and root.

CONSTRUCAO := build
PASTA_DEMO := demo
PACOTES := g++ cmake ninja-build qt6-base-dev libsqlite3-dev libsqlitecpp-dev unixodbc-dev tdsodbc zlib1g-dev \
	nlohmann-json3-dev libxlsxwriter-dev libzint-dev fonts-dejavu-core cmark-gfm
PACOTES_TESTE := libgtest-dev libgmock-dev libzbar-dev clang-format
EM_FALTA = $(shell for p in $(PACOTES) $(1); do \
	dpkg-query -W -f='$${Status}' $$p 2>/dev/null | grep -q 'ok installed' || echo $$p; done)

PACOTES_PACOTE := dpkg-dev fakeroot file lintian

# The programs for Windows are built by a compiler of this machine, of either word size; `ambos` is both.
BITS ?= 64
PACOTES_MINGW := g++-mingw-w64-$(if $(filter 32,$(BITS)),i686,x86-64)-posix libz-mingw-w64-dev dpkg-dev googletest tcl \
	icoutils librsvg2-bin
# A Wine for programs of that size; its driver manager is the machine's own, of the same size.
PACOTES_WINE := wine wine64 $(if $(filter 32,$(BITS)),wine32:i386 libodbc2:i386 tdsodbc:i386)
PACOTES_WINDOWS := $(PACOTES_MINGW) qt6-base-dev-tools nsis cmark-gfm
PRESET_WINDOWS := $(if $(filter 64,$(BITS)),windows,windows-$(BITS))
PRESET_TESTES_WINDOWS := windows-testes$(if $(filter 32,$(BITS)),-32)
PASTA_WINDOWS := $(or $(XDG_CACHE_HOME),$(HOME)/.cache)/orvex-windows
ifneq ($(BITS),ambos)
export ORVEX_WINDOWS_DEPENDENCIAS ?= $(PASTA_WINDOWS)/$(BITS)
endif

LINTER := clang-tidy
LIDOS ?= 'src/*.cpp' 'tools/*.cpp' 'bench/*.cpp' 'bench/*.c' 'tests/apoio/*.cpp' 'tests/fio/*.cpp' 'tests/servidor/*.cpp' \
	'tests/falhas/*.cpp' 'tests/propriedades/*.cpp' 'tests/contrato/*.cpp' ':!*_windows.cpp' \
	':!tools/componente/*.cpp'

PREFIX ?= /usr/local

.PHONY: all run imagens test test-rapido test-windows test-servidor bench format lint install pacote windows clean pacotes \
	pacotes-teste

all: pacotes
	cmake --preset desenvolvimento
	cmake --build --preset desenvolvimento

# Makes a demo company and opens the delivery-note screen on it; without a display, plays a guided session instead
# and leaves its screenshots and a summary of what was written in demo/sessao.
run: all
	@rm -rf $(PASTA_DEMO)
	$(CONSTRUCAO)/bin/orvex-empresa $(PASTA_DEMO)
	@if [ -n "$$DISPLAY$$WAYLAND_DISPLAY" ]; then \
		echo "$(PASTA_DEMO)/orvex 2" && $(PASTA_DEMO)/orvex 2; \
	else \
		QT_QPA_PLATFORM=offscreen $(CONSTRUCAO)/bin/orvex-sessao-guiada $(PASTA_DEMO) $(PASTA_DEMO)/sessao; \
	fi

# The manual's pictures, taken anew: the guided session leaves one for each that the manual shows.
imagens: all
	@rm -rf $(PASTA_DEMO)
	$(CONSTRUCAO)/bin/orvex-empresa $(PASTA_DEMO)
	QT_QPA_PLATFORM=offscreen $(CONSTRUCAO)/bin/orvex-sessao-guiada $(PASTA_DEMO) $(PASTA_DEMO)/sessao
	@mkdir -p docs/manual/imagens && rm -f docs/manual/imagens/*.png && cp $(PASTA_DEMO)/sessao/*.png docs/manual/imagens

test: pacotes-teste
	cmake --preset ci
	cmake --build --preset ci
	ctest --preset ci

# Rules and engines alone: without the wire, the fault loops, the random users, the windows and the whole programs.
test-rapido: pacotes-teste
	cmake --preset ci
	cmake --build --preset ci --target testes_rapidos
	ctest --preset rapido

# What runs on Windows, under Wine: rules, engines, files, and every flow through automation. Without windows, and so
# without Qt; the few libraries are built first, once.
test-windows:
	$(if $(filter 32,$(BITS)),dpkg --print-foreign-architectures | grep -qx i386 || dpkg --add-architecture i386)
	$(MAKE) pacotes-teste PACOTES_TESTE="$(PACOTES_MINGW) $(PACOTES_WINE)"
	tests/windows/prepara.sh $(BITS)
	packaging/windows/dependencias.sh $(BITS) "$(ORVEX_WINDOWS_DEPENDENCIAS)" base
	cmake --preset $(PRESET_TESTES_WINDOWS)
	cmake --build --preset $(PRESET_TESTES_WINDOWS)
	tests/windows/corre.sh $(BITS)

# The contract of the database session and every flow on a real server, in a database made for it and dropped after.
# The password comes from the environment alone, so that it stands in no command line.
test-servidor: export ORVEX_SERVIDOR = $(SERVIDOR)
test-servidor: export ORVEX_BASE = $(BASE)
test-servidor: export ORVEX_UTILIZADOR = $(UTILIZADOR)
test-servidor: export ORVEX_CONTROLADOR = $(CONTROLADOR)
test-servidor: export ORVEX_ENCRIPTACAO = $(ENCRIPTACAO)
test-servidor:
	@[ -n "$$ORVEX_SERVIDOR" ] && [ -n "$$ORVEX_BASE" ] && [ -n "$$ORVEX_UTILIZADOR" ] && [ -n "$$ORVEX_PALAVRA_PASSE" ] || { \
		echo "uso: make test-servidor SERVIDOR=... BASE=... UTILIZADOR=... [CONTROLADOR=...] [ENCRIPTACAO=...]"; \
		echo "     com a palavra-passe em ORVEX_PALAVRA_PASSE e o nome de uma base que não exista"; exit 2; } >&2
	@$(MAKE) pacotes-teste
	cmake --preset ci
	cmake --build --preset ci --target orvex-ensaio
	$(CONSTRUCAO)/ci/bin/orvex-ensaio

bench: pacotes-teste
	cmake --preset medicao
	cmake --build --preset medicao
	build/medicao/bin/orvex-medicoes
	build/medicao/bin/orvex-medicoes-consultas

format: pacotes-teste
	git ls-files '*.h' '*.cpp' '*.c' | xargs clang-format -i

lint:
	$(MAKE) pacotes-teste PACOTES_TESTE="$(PACOTES_TESTE) $(LINTER)"
	cmake --preset lint
	git ls-files $(LIDOS) | xargs -P 2 -n 4 $(LINTER) -p $(CONSTRUCAO)/lint --quiet

# Into $(DESTDIR)$(PREFIX), with the manual pages and what there is to read.
install: all
	DESTDIR="$(DESTDIR)" cmake --install $(CONSTRUCAO) --prefix "$(PREFIX)"

# The Debian package, in build/, and what Debian's own checker says of it.
pacote: all
	$(MAKE) pacotes-teste PACOTES_TESTE="$(PACOTES_PACOTE)"
	cd $(CONSTRUCAO) && rm -f *.deb && cpack -G DEB
	lintian --fail-on error $(CONSTRUCAO)/*.deb

# In build/windows: a folder with the programs and all they need, a zip of it and an installer. The libraries are built
# once, half an hour, and kept outside of the tree in ORVEX_WINDOWS_DEPENDENCIAS. Of both sizes, the installer that carries
# both comes last.
ifeq ($(BITS),ambos)
windows:
	$(MAKE) windows BITS=32 ORVEX_WINDOWS_DEPENDENCIAS="$(or $(ORVEX_WINDOWS_DEPENDENCIAS),$(PASTA_WINDOWS))/32"
	$(MAKE) windows BITS=64 ORVEX_WINDOWS_DEPENDENCIAS="$(or $(ORVEX_WINDOWS_DEPENDENCIAS),$(PASTA_WINDOWS))/64"
	cmake --build --preset windows --target instalador_de_ambos
else
windows:
	$(MAKE) pacotes-teste PACOTES_TESTE="$(PACOTES_WINDOWS)"
	packaging/windows/dependencias.sh $(BITS) "$(ORVEX_WINDOWS_DEPENDENCIAS)"
	cmake --preset $(PRESET_WINDOWS) -DORVEX_WINDOWS_DEPENDENCIAS="$(ORVEX_WINDOWS_DEPENDENCIAS)"
	cmake --build --preset $(PRESET_WINDOWS) --target pacote_windows
endif

clean:
	rm -rf $(CONSTRUCAO) $(PASTA_DEMO)

pacotes:
	@em_falta="$(call EM_FALTA)"; [ -z "$$em_falta" ] || \
		{ apt-get update -q && DEBIAN_FRONTEND=noninteractive apt-get install -qy --no-install-recommends $$em_falta; }

pacotes-teste:
	@em_falta="$(call EM_FALTA,$(PACOTES_TESTE))"; [ -z "$$em_falta" ] || \
		{ apt-get update -q && DEBIAN_FRONTEND=noninteractive apt-get install -qy --no-install-recommends $$em_falta; }
