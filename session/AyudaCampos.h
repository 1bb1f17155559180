#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "session/ConexionBd.h"
#include "toolkit/Controls.h"
#include "toolkit/Desktop.h"

namespace FendaMaestros {

/// The helper of one screen: it paints the field that has the focus, filters the keys of numeric fields and searches.
/// The arguments `text`, `work` and `fixed` belong to the interface and mean nothing here.
class AyudaCampos {
public:
    /// `desktop` must outlive the helper; the search dialog opens on it.
    explicit AyudaCampos(Desktop& desktop) : desktop_(desktop) {}

    Desktop& desktop() const { return desktop_; }

    /// Must be set before Buscar.
    std::shared_ptr<ConexionBd> Conexion;
    /// Of a field without and with the focus; white, until a screen sets its own.
    Color ColorNormal = 16777215;
    Color ColorFoco = 16777215;

    /// A field receives the focus: painted with ColorFoco, its whole text selected so that typing replaces it.
    void EntrarCampo(TextBox& field, const std::string& text, int work);
    /// A field loses the focus: painted with ColorNormal, and its text shown under `mask` (see toolkit/Format.h) unless
    /// the mask is empty or the text does not fit it. What is read as an amount or a date: session/TypedText.h.
    void SalirCampo(TextBox& field, const std::string& mask, int work);
    /// Lets through digits and control keys; with `marks` also the comma of amounts and account codes, the point and
    /// the minus sign, and with `work` withLetters the letters without accents. Any other key becomes 0.
    static constexpr int withLetters = 1;
    void FiltrarTecla(TextBox& field, int& keyAscii, bool marks, int work);

    /// Says of a row that Buscar has read whether what it stands for is out of use; null: of none.
    std::function<bool(const Recordset& rows, int row)> Inactiva;
    /// Lets a person pick a row of a read whose first column is the id and whose next two columns are shown with the
    /// captions and widths (twips) given. `searchColumn` names the column that the search box narrows.
    /// `result` is empty when nothing was chosen; otherwise the values of the row joined by the character with code 1.
    void Buscar(const std::string& sql, const std::string& searchColumn, const std::string& caption1,
                const std::string& caption2, const std::string& title, Twips width1, Twips width2, int fixed,
                std::string& result);

    /// The values of a result of Buscar, one a column; none when nothing was chosen.
    static std::vector<std::string> values(const std::string& result);
    /// The id in a result of Buscar: 0 for one of 2 characters or fewer.
    static std::int64_t chosenId(const std::string& result);

private:
    Desktop& desktop_;
};

}  // namespace FendaMaestros
