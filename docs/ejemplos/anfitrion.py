"""A host in thirty lines: the demonstration company, an identifier checked, and an account made without a display."""

import sys

from fendamaestros import Desktop, FendaMaes, FendaError, Session, create_demonstration, folder_companies

# What the clerk would do on the screen that asks for the new account.
CLERK = """
escribir "Embalajes Tresveredas S.A."
responder "Grabación finalizada" Aceptar
pulsar cmdGuardar
"""


def main(folder: str) -> None:
    companies = folder_companies(folder) or [create_demonstration(folder)]
    with Desktop.script(CLERK) as desktop, Session.folder(folder, companies[0]) as session:
        with FendaMaes(desktop, session) as fenda:
            valid, identifier = fenda.FnVerificarCif("12.345.678-z")
            print("válido" if valid else "no válido", identifier)

            account = fenda.CrearNuevaCuenta("430", nIdNif=11, bCalcula=True)
            [(code, name)] = session.read(f"SELECT PCta_Cta, PCta_Des FROM PCta WHERE PCta_Cta = '{account.Cuenta}'")
            print(code, name)


if __name__ == "__main__":
    try:
        main(sys.argv[1] if len(sys.argv) > 1 else "datos")
    except FendaError as error:
        sys.exit(str(error))
