#pragma once

#include <array>
#include <string_view>

namespace FendaMaestros {

/// A column that holds codes of sub-accounts, and the one beside it that holds their ids.
struct CodePlace {
    std::string_view table;
    std::string_view code;
    std::string_view id;         ///< "" where the code stands alone
    std::string_view where;      ///< the rows that count, behind another condition; "" for all
    std::string_view one, many;  ///< the rows, as they are counted for a person
};

/// What a sub-account is called by. The accounts of the official plan are in the same column and keep their codes.
inline constexpr CodePlace ownCode{"PCta", "PCta_Cta", "PCta_Id", " AND PCta_Subcuenta = 1", "subcuenta", "subcuentas"};

/// Where other rows name a sub-account.
inline constexpr std::array codeReferences{
    // Balances are summed by the code, while the filter by balance and the check of the plan go by the id.
    CodePlace{"Apu", "Apu_Cta", "Apu_IdCta", "", "apunte", "apuntes"},
    // The account of income or expense that goes with an account, by its id and, for lists and files, by its code.
    CodePlace{"PCta", "PCta_CtaAso", "PCta_IdCtaAso", "", "cuenta asociada", "cuentas asociadas"},
    // The account for withholdings, by its code alone: one that is left behind leads nowhere.
    CodePlace{"PCta", "PCta_CtaIrpfAso", "", "", "cuenta de Irpf", "cuentas de Irpf"},
};

// Besides, the company's Par_CtaNum says how long the codes are. These hold no account of a company:
// - Apu_CtaDes is the name that the account had, as the line was written.
// - Fac and Nif know documents: invoices belong to an account through the identity that it is linked to.
// - Pcta_Origen and Pcta_IdOrigen say where an account has come from, in tables of others.
// - KXComun's BalCtas and Conceptos are shared by all companies: codes of the official plans, and codes of concepts.

}  // namespace FendaMaestros
