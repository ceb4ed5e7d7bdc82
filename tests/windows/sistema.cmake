# What asks things of the system: its driver manager, its protected storage and its registry.

# Under Wine the driver manager hands over to that of the machine, which must know the driver by the name that is usual on
# Windows. The fault loop and the random users, which take too long here, go through that manager itself (make test).
set(pasta_odbc ${CMAKE_BINARY_DIR}/odbc)
file(WRITE ${pasta_odbc}/odbcinst.ini "[ODBC Driver 18 for SQL Server]\nDriver=libtdsodbc.so\n")
foreach(nome teste_contrato teste_adjust teste_delivery teste_transfer)
  add_test(NAME fio.${nome} COMMAND ${nome})
  set_tests_properties(fio.${nome} PROPERTIES ENVIRONMENT "ORVEX_TESTE_MOTOR=fio;ODBCSYSINI=${pasta_odbc}")
endforeach()

orvex_teste(teste_odbc SOURCES ../platform/odbc/falhas_teste.cpp LINKS orvex_apoio)
set_tests_properties(teste_odbc.1 PROPERTIES ENVIRONMENT ODBCSYSINI=${pasta_odbc})

orvex_teste(teste_diagnostico SOURCES ../tools/componente_teste.cpp ../tools/palavras_passe_teste.cpp LINKS orvex_apoio
            orvex_diagnostico)
