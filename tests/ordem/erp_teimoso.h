// An ERP that does not do what it says, or does not say what it does.
#pragma once

#include "tests/apoio/gravador.h"

#include <filesystem>

namespace orvex::testes {

enum class Manha {
    nenhuma,
    cria_e_lanca,
    lanca_e_cria_depois, // once it is told to (faz_o_que_falta)
    recusa_e_cria,
    multiplica_linhas, // its lines are numbered 10, 20, 30
    troca_linhas,      // and 3, 2, 1
    anula_e_lanca,
    lanca_e_anula_depois,
    recusa_anular, // as it may
    recusa_e_anula,
    diz_que_anula
};

class ErpTeimoso : public SessaoERPDesviada {
  public:
    // Skips numbers before each document.
    ErpTeimoso(Manha manha, std::filesystem::path empresa) : manha_(manha), empresa_(std::move(empresa)) {}

    void faz_o_que_falta() { falta_(); }

    startup::ChaveDocumento CriaDocStock(const startup::PedidoDocStock& pedido) override;
    startup::ResultadoERP AnulaDocumento(std::int16_t um, const startup::ChaveDocumento& chave) override;
    startup::ResultadoERP ResultadoUltimo() override;
    startup::ValorERP chama(const startup::ReferenciaERP& real, std::string_view membro,
                            Argumentos& argumentos) override;

  private:
    bool cria(const std::function<void()>& faz); // false when it says that it refuses
    void na_base(const char* sql);

    Manha manha_;
    std::filesystem::path empresa_;
    std::function<void()> falta_ = [] {};
    bool recusou_ = false; // the last operation, or so it says
};

} // namespace orvex::testes
