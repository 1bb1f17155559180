#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "toolkit/Form.h"

namespace FendaMaestros::contract {

/// A person with a plan: what to do on each form shown, and what to answer to each message, in order.
class Person final : public Operator {
public:
    using Scene = std::function<void(Form&)>;

    std::deque<Scene> scenes;
    std::deque<Reply> replies;
    std::vector<std::string> messages;

    void attend(Form& form) override {
        if (scenes.empty()) throw std::logic_error("Screen inesperada: " + form.Caption);
        const Scene scene = std::move(scenes.front());
        scenes.pop_front();
        scene(form);
    }
    Reply answer(const Message& message) override {
        messages.push_back(message.text);
        if (replies.empty()) throw std::logic_error("Mensaje inesperado: " + message.text);
        const Reply reply = replies.front();
        replies.pop_front();
        return reply;
    }
    std::optional<std::string> saveFile(const std::string&, const std::string&) override { return std::nullopt; }
};

/// Numbered rows.
class Rows final : public RowSource {
public:
    explicit Rows(int count) : count_(count), current_(count > 0 ? 0 : -1) {}
    std::vector<int> moves;

    int rowCount() const override { return count_; }
    int columnCount() const override { return 2; }
    std::string columnName(int column) const override { return column == 0 ? "Codigo" : "Nombre"; }
    Variant cell(int row, int column) const override { return column == 0 ? Variant(row + 1) : Variant("Fila"); }
    int currentRow() const override { return current_; }
    void moveToRow(int row) override {
        current_ = row >= 0 && row < count_ ? row : -1;
        moves.push_back(current_);
    }

private:
    int count_;
    int current_;
};

/// A maintenance screen in small, under the rules that all screens share: Enter moves on unless a message is pending,
/// Esc leaves. It logs its events.
class Ficha : public Form {
public:
    explicit Ficha(Desktop& desktop) : Form(desktop) {
        Caption = "Ficha";
        add(fraDatos, "fraDatos");
        add(lblCodigo, "lblCodigo", &fraDatos);
        add(Codigo, "Codigo", &fraDatos);
        add(Nombre, "Nombre", &fraDatos);
        add(Tipo, "Tipo");
        add(Activo, "Activo");
        add(Lista, "Lista");
        add(Movimientos, "Movimientos");
        Movimientos.TabStop = false;
        add(Avance, "Avance");
        add(cmdGuardar, "cmdGuardar");
        add(cmdSalir, "cmdSalir");
        layOut(arrange::column(
            {arrange::row({arrange::filling(Lista), arrange::filling(Movimientos)}), arrange::plain(Avance),
             arrange::framed(fraDatos, {arrange::fields({arrange::field(lblCodigo, Codigo)}), arrange::plain(Nombre)}),
             arrange::row({arrange::plain(Tipo), arrange::plain(Activo)}),
             arrange::buttons({&cmdGuardar, &cmdSalir})}));
        setStatusLine(lblEstado, "lblEstado");
        Codigo.MaxLength = 4;
        Codigo.KeyPress = [](int& key) {
            if (key > ' ' && (key < '0' || key > '9')) key = 0;
        };
        for (const char* item : {"Activo", "Pasivo", "Previsto"}) Tipo.AddItem(item);
        for (TextBox* box : {&Codigo, &Nombre}) {
            box->GotFocus = [this, box] { log.push_back("entra " + box->Name); };
            box->LostFocus = [this, box] { log.push_back("sale " + box->Name); };
        }
        Tipo.Click = [this] { log.push_back("lista " + Tipo.Text()); };
        cmdGuardar.Click = [this] { log.push_back("guarda " + Codigo.Text + "/" + Nombre.Text); };
        cmdSalir.Click = [this] { unload(); };
    }

    Frame fraDatos;
    Label lblCodigo{"Código:"};
    TextBox Codigo, Nombre;
    ComboBox Tipo;
    CheckBox Activo;
    DataGrid Lista;
    ListView Movimientos;
    ProgressBar Avance;
    StatusLabel lblEstado;
    CommandButton cmdGuardar{"&Guardar"}, cmdSalir{"&Salir"};
    std::vector<std::string> log;
    /// Before the message a mark is left, so that the Enter that dismisses it does not move the focus.
    void warn(bool marked) {
        if (marked) Tag = "E";
        ask("Falta el código", message::Exclamation, "");
    }

protected:
    void onKeyUp(int& code, int) override {
        if (code == key::Escape) return unload();
        if (code != key::Enter) {
            Tag.clear();
            return desktop().processPending();
        }
        code = 0;
        if (Tag.empty()) sendTab();
        Tag.clear();
    }
};

}  // namespace FendaMaestros::contract
