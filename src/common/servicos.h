// What the rules of a screen call by name: boxes, pick lists, the parameters, the two sessions, the clock.
#pragma once

#include "base/formato_regional.h"
#include "common/janela.h"
#include "confirmacao/observador.h"
#include "startup/parametros.h"
#include "startup/sessao_bd.h"
#include "startup/sessao_erp.h"

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>

namespace orvex::common {

// What start-up hands a screen. The sessions are process-wide and outlive it.
struct ServicosEcra {
    startup::SessaoBD& BD;
    startup::SessaoERP& gERP;
    startup::Parametros parametros;
    base::FormatoRegional formato;
    std::function<base::DataHora()> agora;
    confirmacao::Observador& observador = confirmacao::sem_observador();
};

class Servicos {
  public:
    explicit Servicos(ServicosEcra servicos);

    // The window must be set before Form_Load and outlive the screen's last event.
    void define_janela(Janela& janela) { janela_ = &janela; }
    Janela& janela() const; // throws Falha before it is set

    const base::FormatoRegional& formato() const { return servicos_.formato; }
    const startup::Parametros& parametros() const { return servicos_.parametros; }
    confirmacao::Observador& observador() const { return servicos_.observador; }
    base::DataHora agora() const { return servicos_.agora(); }

    startup::SessaoBD& BD;
    startup::SessaoERP& gERP;

    // Kinds of Avisa; any other shows nothing.
    enum TipoAviso : std::int16_t {
        aviso_obrigatorio = 1, // names the field that must be filled in
        aviso_informacao = 2,
        aviso_ok_cancelar = 3, // Cancel is the default
        aviso_sim_nao = 4,
    };
    // `campo` is a field's caption and is all that the first kind shows; the others show `Aviso`. Gives the
    // answer to a question, 0 otherwise.
    std::int32_t Avisa(const std::string& campo, const std::string& Aviso, std::int16_t Tipo);
    // An information that something depends on: false when it went unread, because the program is ending.
    bool AvisaLido(const std::string& Aviso);
    // Kinds of MostraMensagem, whose boxes are titled with the program's description; any other shows
    // nothing.
    enum TipoMensagem { mensagem_exclamacao = 0, mensagem_informacao = 1, mensagem_critica = 2 };
    std::int16_t MostraMensagem(const std::string& Texto, int Tipo);

    // How far a long handler is. False when the user gave it up.
    bool prossegue(const std::string& progresso) { return janela().prossegue(progresso); }

    // The first column of the row the user chose, or the empty text.
    std::string escolhe_da_lista(const ListaPesquisa& lista);

    struct ColunaBD {
        const char* tabela;
        const char* coluna;
    };
    // The longest text that all of these columns take, as the connected database describes them; 0 when none
    // of them limits it.
    int Comprimento(std::initializer_list<ColunaBD> colunas);
    // Runs work that asks for columns of these tables.
    void ComComprimentos(std::initializer_list<const char*> tabelas, const std::function<void()>& trabalho);

    startup::ReferenciaERP CriaObjectoERP(const std::string& classe) { return gERP.CriaObjecto(classe); }

  private:
    ServicosEcra servicos_;
    Janela* janela_ = nullptr;
};

} // namespace orvex::common
