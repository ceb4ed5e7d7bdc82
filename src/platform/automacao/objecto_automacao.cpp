#include "platform/automacao/objecto_automacao.h"

#include "platform/automacao/falhas.h"

namespace orvex::platform::automacao {

using startup::ValorERP;

ValorERP ObjectoAutomacao::obtem(std::string_view membro) {
    return ligacao_->pede([&](Componente& componente) {
        const Valor valor = componente.le(objecto_, membro);
        return com_nome(componente.nome(objecto_, membro), [&] {
            return ligacao_->valor_de(valor, assinatura_de(membro).tipo, membro_de(membro));
        });
    });
}

void ObjectoAutomacao::poe(std::string_view membro, const ValorERP& valor) {
    ligacao_->pede([&](Componente& componente) {
        componente.poe(objecto_, membro, com_nome(componente.nome(objecto_, membro), [&] {
                           if (valor.objecto) return variant_do_objecto(ligacao_->despacho_de(valor.objecto));
                           return posto(assinatura_de(membro).tipo, valor.valor);
                       }));
    });
}

ValorERP ObjectoAutomacao::invoca(std::string_view membro, Argumentos& argumentos) {
    const Assinatura& assinatura = assinatura_de(membro);
    return ligacao_->pede([&](Componente& componente) {
        const std::string nome = componente.nome(objecto_, membro);
        automacao::Argumentos postos;
        com_nome(nome, [&] {
            for (std::size_t i = 0; i < argumentos.size(); ++i) {
                const auto [tipo, por_referencia] = assinatura.argumento(i);
                if (argumentos[i].objecto)
                    postos.por_valor(variant_do_objecto(ligacao_->despacho_de(argumentos[i].objecto)));
                else if (por_referencia)
                    postos.por_referencia(posto(tipo, argumentos[i].valor));
                else
                    postos.por_valor(posto(tipo, argumentos[i].valor));
            }
        });
        const Valor valor =
            componente.invoca(objecto_, membro, DISPATCH_METHOD | DISPATCH_PROPERTYGET, postos);
        return com_nome(nome, [&] {
            ValorERP resultado = ligacao_->valor_de(valor, assinatura.tipo, membro_de(membro));
            // Everything that can fail has been done; only now are the caller's touched.
            std::vector<base::Variante> deixados;
            for (std::size_t i = 0; i < argumentos.size(); ++i)
                deixados.push_back(assinatura.argumento(i).por_referencia ? variante_de(postos.deixado(i))
                                                                          : base::Variante());
            for (std::size_t i = 0; i < argumentos.size(); ++i)
                if (assinatura.argumento(i).por_referencia) argumentos[i] = std::move(deixados[i]);
            return resultado;
        });
    });
}

} // namespace orvex::platform::automacao
