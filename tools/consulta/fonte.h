// Where the answers come from: the company of an installation, opened to be read.
#pragma once

#include "livro/consultas/consultas.h"
#include "platform/qt/consulta/pergunta.h"
#include "tools/comum/empresa_para_ler.h"

#include <condition_variable>
#include <mutex>

namespace orvex::consulta {

// Runs `le` with what an enquiry needs, on a session of its own; anew, where others opened and closed the
// company amid it.
template <typename Le>
void le_da_empresa(const EmpresaParaLer& empresa, const livro::Casa& casa, const Le& le) {
    const bool inteira = le_em_repouso(empresa.aspecto, [&] {
        const auto BD = empresa.abre();
        // An embedded company's files as they stand at one moment, for all that an answer asks.
        if (empresa.aspecto) BD->IniciaTransaccao();
        le(livro::consultas::Meios{*BD, casa, base::DataHora::agora()});
    });
    if (!inteira) throw base::Falha("A empresa foi aberta e fechada por outros durante a leitura.");
}

// For a window: on a server sessions are kept for the next answer, since opening one takes several requests.
class FonteDaEmpresa : public platform::qt::consulta::Fonte {
  public:
    FonteDaEmpresa(EmpresaParaLer empresa, livro::Casa casa)
        : empresa_(std::move(empresa)), casa_(std::move(casa)) {}

    bool responde(const platform::qt::consulta::Consulta& consulta, livro::consultas::Destino& destino,
                  const std::function<void()>& recomeca) override;

  private:
    bool do_servidor(const platform::qt::consulta::Consulta& consulta, livro::consultas::Destino& destino);
    bool toma_lugar(livro::consultas::Destino& destino); // false where it was given up meanwhile
    void deixa_lugar();

    EmpresaParaLer empresa_;
    livro::Casa casa_;
    std::mutex tranca_; // guards what follows
    std::vector<std::unique_ptr<startup::SessaoBD>> paradas_;
    int a_responder_ = 0; // on a server, which many keys in a row must not swamp
    std::condition_variable ha_lugar_;
};

} // namespace orvex::consulta
