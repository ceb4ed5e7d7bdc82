// The members of the screen's control arrays by what they are. Their numbers are laid down: windows and
// errors show them.
#pragma once

namespace orvex::delivery {

// `campo`, and the button in `btFx` of a field that has a list
namespace campos {
enum : int {
    cliente = 0,
    numero = 1, // of the note
    gestor = 2, // account manager, who the ERP's document takes for its vendor
    vendedor = 3,
    maquina = 11, // out of use and out of sight
    contribuinte = 19,
    processo = 22,
    vosso_numero = 23,
    transporte = 24,
    matricula = 25,
    local_carga = 26,
    local_descarga = 27,
};
}

// `Label2`
namespace rotulos {
enum : int {
    nome_cliente = 1,
    guia = 3,
    facturas = 4,
    designacao = 6, // of the current open line, and the quantity that it came with
    quantidade = 7,
};
}

// `DTPicker2`
namespace momentos {
enum : int { carga = 0, descarga = 1 };
}

// `cb1`, and the items of the choice of warehouse
namespace combos {
enum : int { armazem = 0 };
}
namespace armazens {
enum : int { da_orvex = 0, dos_clientes = 1 };
}

// `btConf`
namespace confirmacoes {
enum : int { emitir = 0, anular = 1 };
}

// `btGV`
namespace devolucoes {
enum : int { abrir = 0, confirmar = 1, desistir = 2 };
}

} // namespace orvex::delivery
