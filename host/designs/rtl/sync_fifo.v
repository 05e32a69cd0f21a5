// FIFO with one clock, 2 ** LOG2_DEPTH words in block RAM. The oldest word stands at pop_data while not empty: the RAM
// is read one clock ahead, so a word shows two clocks after its push. Pushes into a full and pops from an empty FIFO
// are ignored.

`default_nettype none

module sync_fifo #(
    parameter WIDTH      = 8,
    parameter LOG2_DEPTH = 4
) (
    input  wire             clk,
    input  wire             reset,
    input  wire             push,
    input  wire [WIDTH-1:0] push_data,
    output wire             full,
    input  wire             pop,
    output reg  [WIDTH-1:0] pop_data,
    output wire             empty
);
    reg [WIDTH-1:0]    memory [0:(1 << LOG2_DEPTH)-1];
    reg [LOG2_DEPTH:0] write_pointer;   // one bit more than the address tells full from empty
    reg [LOG2_DEPTH:0] read_pointer;
    reg                loaded;          // pop_data holds the word at read_pointer

    wire do_push = push && !full;
    wire do_pop  = pop && !empty;

    wire [LOG2_DEPTH:0] next_read_pointer = read_pointer + {{LOG2_DEPTH{1'b0}}, do_pop};

    assign full  = (write_pointer ^ read_pointer) == {1'b1, {LOG2_DEPTH{1'b0}}};
    assign empty = !loaded;

    always @(posedge clk) begin
        if (do_push)
            memory[write_pointer[LOG2_DEPTH-1:0]] <= push_data;
        pop_data <= memory[next_read_pointer[LOG2_DEPTH-1:0]];
    end

    always @(posedge clk)
        if (reset) begin
            write_pointer <= 0;
            read_pointer  <= 0;
            loaded        <= 1'b0;
        end else begin
            if (do_push)
                write_pointer <= write_pointer + 1'b1;
            read_pointer <= next_read_pointer;
            // Only what was written before this clock edge has been read.
            loaded       <= (next_read_pointer != write_pointer);
        end
endmodule

`default_nettype wire
