-- The history of what is written: ours alone, beside the suite's tables.

CREATE TABLE DOUISHO_LOG_INFO (
    iVersion INT NOT NULL
);

-- A row of another table that a transaction has changed.
CREATE TABLE DOUISHO_LOG (
    cWrite CHAR(32) NOT NULL, -- of the transaction, in the order of time
    iSeq INT NOT NULL, -- place in it
    tTime DATETIME NOT NULL,
    cPcName NVARCHAR(15) NULL,
    cOperation NVARCHAR(40) NOT NULL, -- in the user's words
    nBatch INT NULL,
    cTable VARCHAR(30) NOT NULL,
    iKyotenCd SMALLINT NULL, -- branch, of rows that are a branch's
    iKyotenEb SMALLINT NULL,
    nIDNo INT NULL, -- patient, of rows that are a patient's
    cKey NVARCHAR(60) NOT NULL, -- the rest of the key, its columns joined by /
    iKind SMALLINT NOT NULL, -- 1 new, 2 changed, 3 deleted
    cChanges NVARCHAR(MAX) NOT NULL, -- JSON: column: [before, after]
    CONSTRAINT PK_DOUISHO_LOG PRIMARY KEY (cWrite, iSeq)
);

-- A run: a renewal, a printing, a mailing.
CREATE TABLE DOUISHO_LOG_BATCH (
    nBatch INT NOT NULL,
    tTime DATETIME NOT NULL,
    cPcName NVARCHAR(15) NULL,
    iKyotenCd SMALLINT NULL,
    iKyotenEb SMALLINT NULL,
    cKind NVARCHAR(40) NOT NULL, -- its operation
    nRows INT NOT NULL,
    nDocuments INT NOT NULL,
    nPages INT NOT NULL,
    nTakesBack INT NULL, -- the batch that this one took back
    CONSTRAINT PK_DOUISHO_LOG_BATCH PRIMARY KEY (nBatch)
);

-- A document of a run, kept in the archive.
CREATE TABLE DOUISHO_LOG_DOCUMENT (
    nBatch INT NOT NULL,
    iNo INT NOT NULL,
    cTitle NVARCHAR(100) NOT NULL,
    nPages INT NOT NULL,
    cContent CHAR(64) NOT NULL, -- SHA-256 of its manifest
    CONSTRAINT PK_DOUISHO_LOG_DOCUMENT PRIMARY KEY (nBatch, iNo)
);

CREATE INDEX IX_DOUISHO_LOG_KEY ON DOUISHO_LOG (cTable, iKyotenCd, iKyotenEb, nIDNo, cKey);
CREATE INDEX IX_DOUISHO_LOG_TIME ON DOUISHO_LOG (tTime);
CREATE INDEX IX_DOUISHO_LOG_BATCH ON DOUISHO_LOG (nBatch);

INSERT INTO DOUISHO_LOG_INFO (iVersion) VALUES (1);
