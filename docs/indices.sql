-- Indexes on the ledger's tables. Optional: the program works without them, and gets slower as the ledger grows.
-- To be run by an administrator, in the company's database, after the program's first start. Can be run again: what
-- exists is left alone. Tables of the ERP are not touched.
--
-- Keys that the tables have from the first start: xel_ORVEX (NumSerie, Registo), which finds the newest row of an
-- item, and xel_ORVEX_Mov (Ano, TpDoc, NumDoc, SerieDoc, NumLinha), which finds the lines of a note and the line that
-- a weight was taken from.

-- An adjustment is loaded, replaced and cancelled by its Registo alone, which is only the second column of the key;
-- after a lost connection the same search tells whether the last row written is there.
IF NOT EXISTS (SELECT 1 FROM sys.indexes WHERE name = N'xel_ORVEX_Registo' AND object_id = OBJECT_ID(N'dbo.xel_ORVEX'))
    CREATE INDEX [xel_ORVEX_Registo] ON [dbo].[xel_ORVEX] ([Registo]);

-- Cancelling a note deletes its rows by document; and every row that is written begins with an empty set, where Ano=-1,
-- which without this index reads the whole table.
IF NOT EXISTS (SELECT 1 FROM sys.indexes WHERE name = N'xel_ORVEX_Documento' AND object_id = OBJECT_ID(N'dbo.xel_ORVEX'))
    CREATE INDEX [xel_ORVEX_Documento] ON [dbo].[xel_ORVEX] ([Ano], [TpDoc], [Serie], [NNumDoc]);

-- The list of past adjustments: those of one type and series, with all that the list shows (the item and Registo are in
-- every index, as the table's key).
IF NOT EXISTS (SELECT 1 FROM sys.indexes WHERE name = N'xel_ORVEX_TpDoc' AND object_id = OBJECT_ID(N'dbo.xel_ORVEX'))
    CREATE INDEX [xel_ORVEX_TpDoc] ON [dbo].[xel_ORVEX] ([TpDoc], [Serie], [NNumDoc]) INCLUDE ([Data], [Quantidade]);

-- The open lines of a client, of each document type and series, without those used up; and the client's returns of an
-- item, when a line is ticked.
IF NOT EXISTS (SELECT 1 FROM sys.indexes WHERE name = N'xel_ORVEX_Mov_Cliente' AND object_id = OBJECT_ID(N'dbo.xel_ORVEX_Mov'))
    CREATE INDEX [xel_ORVEX_Mov_Cliente] ON [dbo].[xel_ORVEX_Mov] ([Cliente], [TpDoc], [SerieDoc], [Qtd]) INCLUDE ([Artigo]);

-- Whether an item that is to be transferred still has open lines, of whatever client.
IF NOT EXISTS (SELECT 1 FROM sys.indexes WHERE name = N'xel_ORVEX_Mov_Artigo' AND object_id = OBJECT_ID(N'dbo.xel_ORVEX_Mov'))
    CREATE INDEX [xel_ORVEX_Mov_Artigo] ON [dbo].[xel_ORVEX_Mov] ([Artigo], [TpDoc]);

-- Whether a note's line has been returned, by the line's own key: once for each line that is returned or cancelled.
IF NOT EXISTS (SELECT 1 FROM sys.indexes WHERE name = N'xel_ORVEX_Mov_Origem' AND object_id = OBJECT_ID(N'dbo.xel_ORVEX_Mov'))
    CREATE INDEX [xel_ORVEX_Mov_Origem] ON [dbo].[xel_ORVEX_Mov] ([Origem], [TpDoc]);

-- The enquiries (orvex-consulta): what a client holds or ever held; and what moved in a period, in the order of its days.
-- They use those above too: the notes and open lines of a client or an item, what came back of a note, and the rows of a
-- document.
IF NOT EXISTS (SELECT 1 FROM sys.indexes WHERE name = N'xel_ORVEX_Cliente' AND object_id = OBJECT_ID(N'dbo.xel_ORVEX'))
    CREATE INDEX [xel_ORVEX_Cliente] ON [dbo].[xel_ORVEX] ([Cliente]);

IF NOT EXISTS (SELECT 1 FROM sys.indexes WHERE name = N'xel_ORVEX_Data' AND object_id = OBJECT_ID(N'dbo.xel_ORVEX'))
    CREATE INDEX [xel_ORVEX_Data] ON [dbo].[xel_ORVEX] ([Data]);
